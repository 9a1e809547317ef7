// The menu that CZelLastDocuments keeps up to date, as seen from the core: items
// addressed by command id and by position. The widget library implements it over a
// QMenu; any other menu (a test's, a console host's) can implement it too.
#pragma once

#include <Zel260/platform/Win32Types.h>

class CZelLastDocMenu {
public:
    virtual ~CZelLastDocMenu() = default;
    // The position (0 = first) of the item with command `id`, or -1 when absent.
    virtual int GetItemPosition(UINT id) const = 0;
    // Inserts an item in front of `position`; a position of -1 or behind the last
    // item appends.
    virtual void InsertItem(int position, UINT id, const char* text) = 0;
    // Gives the item at `position` the command `id` and `text`.
    virtual void ModifyItem(int position, UINT id, const char* text) = 0;
    // Removes the item with command `id`; nothing when absent.
    virtual void RemoveItem(UINT id) = 0;
    // Enables or disables (greys) the item with command `id`.
    virtual void EnableItem(UINT id, BOOL enable) = 0;
};
