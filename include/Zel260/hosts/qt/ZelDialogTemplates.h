// Dialog templates on Qt: a template is a function that builds a dialog's children
// (with their control ids) on the dialog's widget, registered in a resource module
// under the template's id and, optionally, a name.
//
//   static void BuildInput(QWidget* dlg)
//   {
//       auto* edit = new CZelEdit(dlg);
//       ZelSetDlgCtrlID(ZelHwndFromWidget(edit), 1001);
//       ...
//   }
//   ZelRegisterDialogTemplate(module, IDD_INPUT, {"Input", 200, 120, BuildInput});
//
// Sizes are dialog units; ZelMapDialogRect converts them by the dialog's font as
// Windows' MapDialogRect does (a horizontal unit is a quarter of the average
// character width, a vertical unit an eighth of the character height).
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

#include <functional>

class QWidget;

struct ZelDialogTemplate {
    CString caption;
    int width = 0;  // dialog units; 0 leaves the size to the layout
    int height = 0;
    std::function<void(QWidget* dialog)> build;
};

// Registers (or replaces) template `id` in `module`; `name` (may be null) is a second
// key. FALSE for a null module or a template without a builder.
BOOL ZelRegisterDialogTemplate(HINSTANCE module, UINT id, ZelDialogTemplate tmpl, const char* name = nullptr);
// The template, or null when `module` has none of that id or name.
const ZelDialogTemplate* ZelFindDialogTemplate(HINSTANCE module, UINT id);
const ZelDialogTemplate* ZelFindDialogTemplate(HINSTANCE module, const char* name);
// Converts a rectangle from dialog units to pixels of `dialog`'s font.
void ZelMapDialogRect(const QWidget* dialog, RECT* rect);
