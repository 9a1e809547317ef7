// The real sizes of controls on the present display, for layouts built in code.
// Measured once on a hidden form (template "ZelDialogMetrics" of the library's
// module) holding one control of each kind. Pixels; needs a QApplication.
#pragma once

#include <Zel260/platform/CGeometry.h>

#include <QFont>

class CZelDialogMetrics {
public:
    // The font of dialogs.
    static QFont Font();
    // The font's character set; every text here is UTF-8 (Windows' 65001).
    static int CharSet();
    // The margin between a dialog's edge and its controls, and between controls.
    static CSize Margin();
    // The extent of `text` in the dialog font (null counts as "").
    static CSize GetSize(const char* text);
    // Preferred sizes of a label, an edit, a check box and a radio button.
    static CSize Static();
    static CSize Edit();
    static CSize Checkbox();
    static CSize Radiobutton();
    // Height of a list's header and of one row of a report list.
    static int ListCtrlHeaderHeight();
    static int ListCtrlRVItemHeight();
};
