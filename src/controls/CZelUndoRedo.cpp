#include <Zel260/controls/CZelUndoRedo.h>

IMPLEMENT_DYNCREATE(CZelUndoRedo, CObject)

CZelUndoRedo::~CZelUndoRedo() { Empty(); }

void CZelUndoRedo::Empty()
{
    for (CObject* o : m_undo)
        delete o;
    for (CObject* o : m_redo)
        delete o;
    m_undo.clear();
    m_redo.clear();
}

void CZelUndoRedo::AddPrevious(CObject* previous)
{
    if (!previous)
        return;
    m_undo.push_back(previous);
    for (CObject* o : m_redo)
        delete o;
    m_redo.clear();
}

CObject* CZelUndoRedo::step(std::vector<CObject*>& from, std::vector<CObject*>& to, CObject* current)
{
    if (from.empty()) {
        delete current;
        return nullptr;
    }
    CObject* back = from.back();
    from.pop_back();
    if (current)
        to.push_back(current);
    return back;
}

CObject* CZelUndoRedo::Undo(CObject* current) { return step(m_undo, m_redo, current); }

CObject* CZelUndoRedo::Redo(CObject* current) { return step(m_redo, m_undo, current); }
