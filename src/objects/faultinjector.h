#pragma once

#include "zebobjects_export.h"

#include "contracts/failure.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

namespace ZebObjects {

// One ordered record of the calls made on every object of this library that takes part, and a
// way to make exactly the n-th of them fail, whichever object it lands on. At most one sequence
// is active in the process at a time; while it is, every injector reports its calls to it.
class ZEBOBJECTS_EXPORT CallSequence {
public:
    // Told about each call before it runs (or fails): its number, counted from 1, and member.
    using Observer = std::function<void(qint64 number, const QString& member)>;

    CallSequence();
    ~CallSequence();
    CallSequence(const CallSequence&) = delete;
    CallSequence& operator=(const CallSequence&) = delete;

    static CallSequence* active();
    // Starts counting and recording from zero. Only the active sequence counts.
    void start();
    void stop();

    // The call with this number (from 1) fails with error; every other call succeeds.
    void failAt(qint64 number, const ErrorInfo& error);
    void setObserver(Observer observer) { m_observer = std::move(observer); }
    // Counts only the calls the filter accepts (all without one); the others run untouched.
    void setFilter(std::function<bool(const QString& member)> filter)
    {
        m_filter = std::move(filter);
    }

    qint64 count() const { return m_count; }
    QStringList calls() const { return m_calls; }
    // Whether the armed failure has been thrown.
    bool failed() const { return m_failed; }

    // For FaultInjector: records the call and throws if it is the armed one.
    void onCall(const QString& member);

private:
    QStringList m_calls;
    qint64 m_count = 0;
    qint64 m_failAt = 0;
    ErrorInfo m_error;
    bool m_failed = false;
    Observer m_observer;
    std::function<bool(const QString&)> m_filter;
};

// Makes any member of a stand-alone business object fail on demand, so that every error path of
// the controls can be driven. Members are named as callers see them: a read by its name ("Text"),
// a write by its name and "=" ("Text="), a method by its name ("Add").
// It can also record the members called, in order, for tests of calling order.
class ZEBOBJECTS_EXPORT FaultInjector {
public:
    // The next call of member fails with error; later calls succeed again.
    void failNext(const QString& member, const ErrorInfo& error);
    // Every call of member fails with error until cleared.
    void failAlways(const QString& member, const ErrorInfo& error);
    void clear(const QString& member);
    void clearAll();

    void setRecording(bool on);
    QStringList calls() const { return m_calls; }
    void clearCalls() { m_calls.clear(); }

    // Whether this object's calls go to the active call sequence (they do unless turned off,
    // as for a diagnostic log that should not count as business-object calls).
    void setInSequence(bool on) { m_inSequence = on; }

    // Called first by every member: throws the armed failure, if any.
    void check(const char* member) const
    {
        if (m_armed.isEmpty() && !m_recording && !(m_inSequence && CallSequence::active()))
            return;
        checkSlow(QString::fromLatin1(member));
    }

private:
    struct Armed {
        ErrorInfo error;
        bool always = false;
    };
    void checkSlow(const QString& member) const;

    mutable QHash<QString, Armed> m_armed;
    mutable QStringList m_calls;
    bool m_recording = false;
    bool m_inSequence = true;
};

// Base of every stand-alone object: gives it its injector.
class ZEBOBJECTS_EXPORT FaultInjectable {
public:
    FaultInjector& faults() const { return m_faults; }

protected:
    void check(const char* member) const { m_faults.check(member); }

private:
    mutable FaultInjector m_faults;
};

}  // namespace ZebObjects
