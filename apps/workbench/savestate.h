#pragma once

#include <QString>

// What the status bar says about saving: the one place that decides it, from what the
// workstation knows of the office and of its last write. The window never claims a save it did
// not make: a failed write shows until a later write succeeds or the pages are shown again from
// what the office holds.
class SaveState {
public:
    // The office the window shows: a file (server empty) or the database on a server, and
    // whether it was opened read-only.
    void setOffice(const QString& server, bool readOnly);
    // A write was committed.
    void writeSaved();
    // A write failed in the database; cause says why (the failure's description).
    void writeFailed(const QString& cause);
    // The pages were bound again to what the office holds: nothing they show is unsaved.
    void shownFromOffice();
    // What the user is still typing in a field and has not handed on yet (its name); empty when
    // nothing is.
    void setPendingEdit(const QString& what) { m_pending = what; }

    bool readOnly() const { return m_readOnly; }
    bool failed() const { return !m_failure.isEmpty(); }
    // The status bar's text.
    QString text() const;

private:
    QString m_server;
    bool m_readOnly = false;
    QString m_failure;
    QString m_pending;
};
