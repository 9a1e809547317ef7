// A dialog with validated input: type a number outside 1..1000 and press TAB to see
// the reason below the field; OK stays off until the station is filled in.
#include "InputDialogForm.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    inputdialog::CInputDialog dialog;
    dialog.SetAutoDelete(FALSE);
    const INT_PTR result = dialog.DoModal(inputdialog::Resources());
    if (result == IDOK) {
        std::printf("sets: %d, name: %s, station: %s\n", dialog.Edit(inputdialog::IDC_COUNT)->GetInt(),
                    dialog.Edit(inputdialog::IDC_NAME)->GetString().GetString(),
                    dialog.Edit(inputdialog::IDC_STATION)->GetString().GetString());
        return 0;
    }
    std::printf("cancelled\n");
    return 1;
}
