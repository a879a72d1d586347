#pragma once

#include "contracts/lineitems.h"

#include <algorithm>
#include <memory>

// The first lines of a job, as many as the Line Items page can show: its list stops at 744
// rows, and a job may have more. The package prints them all from the job itself.
class FirstLines : public ZebObjects::LineItems {
public:
    static constexpr qint16 Displayed = 744;

    FirstLines(std::shared_ptr<ZebObjects::LineItems> lines, qint16 limit = Displayed)
        : m_lines(std::move(lines)), m_limit(limit)
    { }

    qint16 Count() const override { return std::min(m_lines->Count(), m_limit); }
    std::shared_ptr<ZebObjects::LineItem> Item(qint16 position) const override
    {
        // A position past the limit fails as one past the end does.
        if (position > m_limit)
            return m_lines->Item(qint16(-1));
        return m_lines->Item(position);
    }
    ZebObjects::LineItemList Enumerate() const override
    {
        ZebObjects::LineItemList all = m_lines->Enumerate();
        if (all.size() > m_limit)
            all.resize(m_limit);
        return all;
    }

private:
    std::shared_ptr<ZebObjects::LineItems> m_lines;
    qint16 m_limit;
};
