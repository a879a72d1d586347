#include "objects/faultinjector.h"

namespace ZebObjects {

namespace {
CallSequence* g_active = nullptr;
}  // namespace

CallSequence::CallSequence() = default;

CallSequence::~CallSequence()
{
    stop();
}

CallSequence* CallSequence::active()
{
    return g_active;
}

void CallSequence::start()
{
    m_calls.clear();
    m_count = 0;
    m_failed = false;
    g_active = this;
}

void CallSequence::stop()
{
    if (g_active == this)
        g_active = nullptr;
}

void CallSequence::failAt(qint64 number, const ErrorInfo& error)
{
    m_failAt = number;
    m_error = error;
    m_failed = false;
}

void CallSequence::onCall(const QString& member)
{
    if (m_filter && !m_filter(member))
        return;
    ++m_count;
    m_calls.append(member);
    if (m_observer)
        m_observer(m_count, member);
    if (m_count == m_failAt) {
        m_failed = true;
        throw Failure(m_error);
    }
}

void FaultInjector::failNext(const QString& member, const ErrorInfo& error)
{
    m_armed.insert(member, Armed{error, false});
}

void FaultInjector::failAlways(const QString& member, const ErrorInfo& error)
{
    m_armed.insert(member, Armed{error, true});
}

void FaultInjector::clear(const QString& member)
{
    m_armed.remove(member);
}

void FaultInjector::clearAll()
{
    m_armed.clear();
}

void FaultInjector::setRecording(bool on)
{
    m_recording = on;
}

void FaultInjector::checkSlow(const QString& member) const
{
    if (m_recording)
        m_calls.append(member);
    if (m_inSequence)
        if (CallSequence* sequence = CallSequence::active())
            sequence->onCall(member);
    const auto it = m_armed.find(member);
    if (it == m_armed.end())
        return;
    const ErrorInfo error = it->error;
    if (!it->always)
        m_armed.erase(it);
    throw Failure(error);
}

}  // namespace ZebObjects
