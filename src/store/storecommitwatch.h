#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;
class QTimer;

namespace ZebObjects {

class StoreConnection;

// Other connections' commits to a database on the office's server, as the server announces them
// (LISTEN on the store's change channel, NOTIFY by every committing writer). The announcements are
// read off the connection's socket and told from the event loop; the connection's own are not
// told. While it lives it also notices a connection the server dropped, so that the next use makes
// it again (and listens again) instead of finding it dead.
class StoreCommitWatch {
public:
    explicit StoreCommitWatch(StoreConnection& connection);
    ~StoreCommitWatch();
    StoreCommitWatch(const StoreCommitWatch&) = delete;
    StoreCommitWatch& operator=(const StoreCommitWatch&) = delete;

    // Called (from the event loop) for each commit of another connection.
    void setOnCommit(std::function<void()> onCommit);
    // Tells onCommit now: after the connection was made again, commits may have gone by
    // unannounced.
    void tell();

    // Listens on the connection as it is now; does nothing without a server connection.
    void listen();
    void stopListening();
    bool listening() const { return m_listener != nullptr; }
    // A statement's answer may carry announcements along; the socket then has nothing more to
    // tell, so they are read from the event loop.
    void announcementsMayWait();

private:
    void readAnnouncements();

    StoreConnection& m_c;
    std::function<void()> m_onCommit;
    // Owned by m_check, so that it goes with the watch at the latest.
    QSocketNotifier* m_listener = nullptr;
    bool m_readPending = false;
    std::unique_ptr<QTimer> m_check;
};

}  // namespace ZebObjects
