#include <Zel260/hosts/qt/CZelDialogMetrics.h>
#include <Zel260/hosts/qt/ZelDialogTemplates.h>

#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QApplication>
#include <QCheckBox>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>
#include <QTreeWidget>

namespace {

enum { kStatic = 1, kEdit, kCheck, kRadio, kList };

struct Measured {
    QFont font;
    CSize margin, label, edit, check, radio;
    int header = 0;
    int row = 0;
};

CSize size(QWidget* form, int id)
{
    QWidget* w = ZelWidgetFromHwnd(::GetDlgItem(ZelHwndFromWidget(form), id));
    const QSize s = w ? w->sizeHint() : QSize();
    return CSize(s.width(), s.height());
}

const Measured& measured()
{
    static const Measured m = [] {
        HINSTANCE lib = ZelLibraryInstance();
        if (!ZelFindDialogTemplate(lib, "ZelDialogMetrics")) {
            ZelRegisterDialogTemplate(
                lib, 0x7F01,
                {"", 0, 0,
                 [](QWidget* d) {
                     auto put = [](QWidget* w, int id) { ZelSetDlgCtrlID(ZelHwndFromWidget(w), id); };
                     put(new QLabel("Static", d), kStatic);
                     put(new QLineEdit(d), kEdit);
                     put(new QCheckBox("Check", d), kCheck);
                     put(new QRadioButton("Radio", d), kRadio);
                     auto* list = new QTreeWidget(d);
                     list->setHeaderLabels({"Column"});
                     list->addTopLevelItem(new QTreeWidgetItem(QStringList{"Row"}));
                     put(list, kList);
                 }},
                "ZelDialogMetrics");
        }
        QWidget form;
        ZelFindDialogTemplate(lib, "ZelDialogMetrics")->build(&form);
        Measured r;
        r.font = form.font();
        const int margin = form.style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
        const int spacing = form.style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing);
        r.margin = CSize(margin, spacing > 0 ? spacing : margin);
        r.label = size(&form, kStatic);
        r.edit = size(&form, kEdit);
        r.check = size(&form, kCheck);
        r.radio = size(&form, kRadio);
        auto* list = static_cast<QTreeWidget*>(ZelWidgetFromHwnd(::GetDlgItem(ZelHwndFromWidget(&form), kList)));
        r.header = list->header()->sizeHint().height();
        r.row = list->sizeHintForRow(0) > 0 ? list->sizeHintForRow(0) : QFontMetrics(r.font).height() + 2;
        return r;
    }();
    return m;
}

} // namespace

QFont CZelDialogMetrics::Font() { return measured().font; }
int CZelDialogMetrics::CharSet() { return 65001; }
CSize CZelDialogMetrics::Margin() { return measured().margin; }

CSize CZelDialogMetrics::GetSize(const char* text)
{
    const QFontMetrics fm(measured().font);
    const QSize s = fm.size(0, QString::fromUtf8(text ? text : ""));
    return CSize(s.width(), s.height());
}

CSize CZelDialogMetrics::Static() { return measured().label; }
CSize CZelDialogMetrics::Edit() { return measured().edit; }
CSize CZelDialogMetrics::Checkbox() { return measured().check; }
CSize CZelDialogMetrics::Radiobutton() { return measured().radio; }
int CZelDialogMetrics::ListCtrlHeaderHeight() { return measured().header; }
int CZelDialogMetrics::ListCtrlRVItemHeight() { return measured().row; }
