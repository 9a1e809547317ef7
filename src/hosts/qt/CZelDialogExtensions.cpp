#include <Zel260/hosts/qt/CZelDialogExtensions.h>
#include <Zel260/hosts/qt/CZelDialog.h>

#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QPushButton>

#include <algorithm>

namespace {

QWidget* widgetOf(CWnd* w) { return w ? ZelWidgetFromHwnd(w->GetSafeHwnd()) : nullptr; }

} // namespace

CZelDialogExtensions::CZelDialogExtensions(CWnd* host) { SetServicesHost(host); }

CZelDialogExtensions::~CZelDialogExtensions()
{
    // Created children belong to their parent window; the others are still ours.
    for (CChildDialog& c : m_children)
        if (c.dialog && !c.dialog->parentWidget())
            delete c.dialog;
}

int CZelDialogExtensions::AddChildDialog(HINSTANCE instance, UINT id, int startHere)
{
    return AddChildDialog(nullptr, instance, id, startHere);
}

int CZelDialogExtensions::AddChildDialog(CRuntimeClass* cls, HINSTANCE instance, UINT id, int startHere)
{
    CZelDialog* dialog = nullptr;
    if (cls) {
        CObject* o = cls->CreateObject();
        dialog = dynamic_cast<CZelDialog*>(o);
        if (!dialog) {
            delete o;
            return -1;
        }
        dialog->SetTemplateId(id);
    } else {
        dialog = new CZelDialog(id);
    }
    dialog->SetChildInDialog(TRUE);
    CChildDialog record;
    record.instance = instance;
    record.templateId = id;
    record.dialog = dialog;
    m_children.push_back(record);
    const int index = static_cast<int>(m_children.size()) - 1;
    if (startHere)
        m_startChild = index;
    return index;
}

int CZelDialogExtensions::InitChildDialogs(int move)
{
    QWidget* host = widgetOf(m_servicesHost);
    QWidget* placeholder =
        host && m_placeholderId != -1 ? ZelWidgetFromHwnd(::GetDlgItem(ZelHwndFromWidget(host), m_placeholderId))
                                      : nullptr;
    if (!placeholder)
        return 1;
    const QRect area = placeholder->geometry();
    m_childArea = CRect(area.left(), area.top(), area.right() + 1, area.bottom() + 1);
    QWidget* areaParent = placeholder->parentWidget();
    delete placeholder;
    const bool hostHasDefault = std::ranges::any_of(host->findChildren<QPushButton*>(),
                                                    [](QPushButton* b) { return b->isDefault(); });
    for (CChildDialog& c : m_children) {
        if (!c.dialog->CreateChild(c.instance, areaParent))
            continue;
        const QSize size = c.dialog->sizeHint();
        c.original = CRect(0, 0, size.width(), size.height());
        if (move)
            c.dialog->setGeometry(area);
        c.dialog->hide();
        if (hostHasDefault)
            for (QPushButton* b : c.dialog->findChildren<QPushButton*>()) {
                b->setDefault(false);
                b->setAutoDefault(false);
            }
        c.dialog->SetDialogDocument(m_document);
    }
    if (!m_children.empty())
        SwitchChildDialog(m_startChild, FALSE);
    return 1;
}

BOOL CZelDialogExtensions::SwitchChildDialog(int idOrIndex, int byId)
{
    const int index = byId ? ChildDialogIndex(static_cast<UINT>(idOrIndex)) : idOrIndex;
    if (index < 0 || index >= GetChildDialogCount())
        return FALSE;
    if (CZelDialog* current = CurrentChildDialog())
        current->hide();
    m_currentChild = index;
    CZelDialog* next = m_children[static_cast<std::size_t>(index)].dialog;
    next->show();
    next->update();
    return TRUE;
}

CZelDialog* CZelDialogExtensions::ChildDialog(int index) const
{
    return index >= 0 && index < GetChildDialogCount() ? m_children[static_cast<std::size_t>(index)].dialog : nullptr;
}

int CZelDialogExtensions::ChildDialogIndex(UINT id) const
{
    for (std::size_t i = 0; i < m_children.size(); ++i)
        if (m_children[i].templateId == id)
            return static_cast<int>(i);
    return -1;
}

CRect CZelDialogExtensions::ChildDialogRectOriginal(int index) const
{
    return index >= 0 && index < GetChildDialogCount() ? m_children[static_cast<std::size_t>(index)].original
                                                       : CRect();
}

CZelDialog* CZelDialogExtensions::CurrentChildDialog() const { return ChildDialog(m_currentChild); }

BOOL CZelDialogExtensions::ExchangeChildDialogId(int index, UINT id)
{
    if (index < 0 || index >= GetChildDialogCount())
        return FALSE;
    m_children[static_cast<std::size_t>(index)].templateId = id;
    m_children[static_cast<std::size_t>(index)].dialog->SetTemplateId(id);
    return TRUE;
}

void CZelDialogExtensions::SetDialogDocument(CObject* document)
{
    m_document = document;
    OnSetDialogDocument(document);
}

void CZelDialogExtensions::UnsetDialogDocument()
{
    OnUnsetDialogDocument();
    m_document = nullptr;
}

void CZelDialogExtensions::OnSetDialogDocument(CObject* document)
{
    for (CChildDialog& c : m_children)
        c.dialog->SetDialogDocument(document);
}

void CZelDialogExtensions::OnUnsetDialogDocument()
{
    for (CChildDialog& c : m_children)
        c.dialog->UnsetDialogDocument();
}

BOOL CZelDialogExtensions::ShiftDlgItem(UINT id, int dx, int dy)
{
    QWidget* host = widgetOf(m_servicesHost);
    QWidget* w = host ? ZelWidgetFromHwnd(::GetDlgItem(ZelHwndFromWidget(host), static_cast<int>(id))) : nullptr;
    if (!w)
        return FALSE;
    w->move(w->x() + dx, w->y() + dy);
    return TRUE;
}

int CZelDialogExtensions::GetNextFreeDlgItemID() const
{
    int highest = 1000;
    if (QWidget* host = widgetOf(m_servicesHost))
        for (QWidget* w : host->findChildren<QWidget*>())
            highest = std::max(highest, ::GetDlgCtrlID(ZelHwndFromWidget(w)));
    return highest + 1;
}
