#pragma once

#include "contracts/failure.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace ZebObjects {

// Makes any member of a stand-alone business object fail on demand, so that every error path of
// the controls can be driven. Members are named as callers see them: a read by its name ("Text"),
// a write by its name and "=" ("Text="), a method by its name ("Add").
// It can also record the members called, in order, for tests of calling order.
class FaultInjector {
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

    // Called first by every member: throws the armed failure, if any.
    void check(const char* member) const
    {
        if (m_armed.isEmpty() && !m_recording)
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
};

// Base of every stand-alone object: gives it its injector.
class FaultInjectable {
public:
    FaultInjector& faults() const { return m_faults; }

protected:
    void check(const char* member) const { m_faults.check(member); }

private:
    mutable FaultInjector m_faults;
};

}  // namespace ZebObjects
