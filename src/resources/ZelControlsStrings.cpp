// The input controls' texts in the library's string table.
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/resources/ZelControlsResourceIds.h>

namespace {

const CZelStringTableRegistrar registrar{
    {IDS_ZEL_FIELD_MUST_NOT_BE_EMPTY, "Field must not be empty"},
    {IDS_ZEL_EDIT_TOO_FEW_CHARS, "Field contains %d characters, minimum is %d characters"},
    {IDS_ZEL_EDIT_TOO_MANY_CHARS, "Field contains %d characters, maximum is %d characters"},
    {IDS_ZEL_EDIT_MENU_UNDO, "&Undo\tCtrl+Z"},
    {IDS_ZEL_EDIT_MENU_REDO, "&Redo\tCtrl+Y"},
    {IDS_ZEL_EDIT_MENU_CUT, "Cu&t\tCtrl+X"},
    {IDS_ZEL_EDIT_MENU_COPY, "&Copy\tCtrl+C"},
    {IDS_ZEL_EDIT_MENU_PASTE, "&Paste\tCtrl+V"},
    {IDS_ZEL_EDIT_MENU_DELETE, "&Delete\tDel"},
    {IDS_ZEL_EDIT_MENU_SELECTALL, "&Select All\tCtrl+A"},
    {IDS_ZEL_EDIT_MENU_INSERT, "&Insert"},
};

} // namespace
