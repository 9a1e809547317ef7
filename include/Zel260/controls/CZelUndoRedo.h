// Two stacks of states for undo and redo. The stacks own what they hold.
//
//   undo.AddPrevious(stateBeforeChange);     // every change: redo is forgotten
//   CObject* back = undo.Undo(currentState); // current goes to redo; caller owns back
#pragma once

#include <Zel260/platform/CObject.h>

#include <vector>

class CZelUndoRedo : public CObject {
    DECLARE_DYNCREATE(CZelUndoRedo)

public:
    CZelUndoRedo() = default;
    ~CZelUndoRedo() override;
    CZelUndoRedo(const CZelUndoRedo&) = delete;
    CZelUndoRedo& operator=(const CZelUndoRedo&) = delete;

    BOOL CanUndo() const { return !m_undo.empty(); }
    BOOL CanRedo() const { return !m_redo.empty(); }
    // Deletes everything on both stacks.
    void Empty();
    // Pushes `previous` (taken over; null is ignored) on the undo stack and deletes
    // every redo step.
    void AddPrevious(CObject* previous);
    // Pops the newest undo step and returns it (the caller owns it), pushing
    // `current` (taken over) on the redo stack. Null, with `current` deleted, when
    // there is nothing to undo.
    CObject* Undo(CObject* current);
    // The mirror of Undo.
    CObject* Redo(CObject* current);

    std::size_t GetUndoCount() const { return m_undo.size(); }
    std::size_t GetRedoCount() const { return m_redo.size(); }

private:
    static CObject* step(std::vector<CObject*>& from, std::vector<CObject*>& to, CObject* current);
    std::vector<CObject*> m_undo;
    std::vector<CObject*> m_redo;
};
