#include "objects/faultinjector.h"

namespace ZebObjects {

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
    const auto it = m_armed.find(member);
    if (it == m_armed.end())
        return;
    const ErrorInfo error = it->error;
    if (!it->always)
        m_armed.erase(it);
    throw Failure(error);
}

}  // namespace ZebObjects
