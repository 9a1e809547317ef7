// One state of an edit for undo and redo: its text and its selection.
#pragma once

#include <Zel260/platform/CObject.h>
#include <Zel260/platform/CString.h>

class CZelEditUndoRedoItem : public CObject {
    DECLARE_DYNCREATE(CZelEditUndoRedoItem)

public:
    // The selection value that means "no selection known".
    static constexpr int NoSelection = -99999;

    CZelEditUndoRedoItem() = default;
    // `start` and `end` are character positions (NoSelection: unknown).
    CZelEditUndoRedoItem(const CString& text, int start, int end) : m_text(text), m_start(start), m_end(end) {}

    CString m_text;
    int m_start = NoSelection;
    int m_end = NoSelection;
};
