#pragma once

#include "platform/keyedlistview.h"

namespace ZebSubCtl {

// Ends a batch of list changes also when a step of the fill fails: what was added stays.
class ListUpdate {
public:
    explicit ListUpdate(KeyedListView* list) : m_list(list) { m_list->beginUpdate(); }
    ~ListUpdate() { m_list->endUpdate(); }
    ListUpdate(const ListUpdate&) = delete;
    ListUpdate& operator=(const ListUpdate&) = delete;

private:
    KeyedListView* m_list;
};

}  // namespace ZebSubCtl
