#include <Zel260/controls/CZelEditUndoRedoItem.h>

IMPLEMENT_DYNCREATE(CZelEditUndoRedoItem, CObject)
