#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/controls/qt/CZelMenuPopUpEdit.h>
#include <Zel260/controls/qt/CZelInlineControlContainer.h>

#include "../ControlsString.h"
#include "ZelQtWindows.h"

#include <Zel260/controls/ZelVirtualKeys.h>
#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/SysColors.h>
#include <Zel260/resources/ZelControlsResourceIds.h>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDialog>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QMimeData>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

IMPLEMENT_DYNCREATE(CZelEdit, CWnd)

namespace {

int g_trimLeftDefault = 1;
int g_trimRightDefault = 1;

constexpr DWORD kStyleReadOnly = 0x800;
constexpr DWORD kStylePassword = 0x20;

QString q(const CString& s) { return QString::fromUtf8(s.GetString(), s.GetLength()); }
CString c(const QString& s)
{
    const QByteArray b = s.toUtf8();
    return CString(b.constData(), static_cast<int>(b.size()));
}

int charCount(const char* text) { return static_cast<int>(QString::fromUtf8(text ? text : "").toUcs4().size()); }

QColor colour(COLORREF r) { return QColor(GetRValue(r), GetGValue(r), GetBValue(r)); }

bool isUnset(COLORREF r) { return r == 0xFFFFFFFFu; }

// The lowest control id above every id in use under `parent`.
int nextFreeDlgItemId(QWidget* parent)
{
    int highest = 1000;
    if (parent)
        for (QWidget* w : parent->findChildren<QWidget*>())
            highest = std::max(highest, ::GetDlgCtrlID(ZelHwndFromWidget(w)));
    return highest + 1;
}

} // namespace

// Two arrow buttons stacked at the right end of the edit.
class CZelEdit::CZelEditSpin : public QWidget {
public:
    explicit CZelEditSpin(CZelEdit* edit) : QWidget(edit), m_edit(edit)
    {
        m_up = new QToolButton(this);
        m_down = new QToolButton(this);
        m_up->setArrowType(Qt::UpArrow);
        m_down->setArrowType(Qt::DownArrow);
        for (QToolButton* b : {m_up, m_down}) {
            b->setAutoRepeat(true);
            b->setFocusPolicy(Qt::NoFocus);
        }
        QObject::connect(m_up, &QToolButton::clicked, [this] { step(true); });
        QObject::connect(m_down, &QToolButton::clicked, [this] { step(false); });
    }
    // A step as the spin control makes it: up is a negative delta.
    void step(bool up) { m_edit->OnSpinDeltapos(up ? 1 : 0, up ? -m_edit->GetSpinDelta() : m_edit->GetSpinDelta()); }
    void resizeEvent(QResizeEvent*) override
    {
        const int h = height() / 2;
        m_up->setGeometry(0, 0, width(), h);
        m_down->setGeometry(0, h, width(), height() - h);
    }
    CZelEdit* m_edit;
    QToolButton* m_up;
    QToolButton* m_down;
};

CZelEdit::CZelEditButton::CZelEditButton(CZelEdit* edit, const QString& text, QWidget* parent)
    : QPushButton(text, parent), m_edit(edit)
{
    setFocusPolicy(Qt::NoFocus);
    setProperty("zelRoutesCommand", true);
    QObject::connect(this, &QPushButton::clicked, [this] { m_edit->DispatchButtonClicked(); });
}

// ---------------------------------------------------------------------------------

void CZelEdit::SetTrimLeftDefault(int trim) { g_trimLeftDefault = trim; }
int CZelEdit::GetTrimLeftDefault() { return g_trimLeftDefault; }
void CZelEdit::SetTrimRightDefault(int trim) { g_trimRightDefault = trim; }
int CZelEdit::GetTrimRightDefault() { return g_trimRightDefault; }

CZelEdit::CZelEdit(QWidget* parent)
    : QLineEdit(parent), m_menuInstance(ZelLibraryInstance()), m_menuId(IDR_ZEL_EDIT_CONTEXT_MENU),
      m_trimLeft(g_trimLeftDefault), m_trimRight(g_trimRightDefault),
      m_undoItemClass(RUNTIME_CLASS(CZelEditUndoRedoItem))
{
    Attach(ZelHwndFromWidget(this));
    setAcceptDrops(false);
    m_lastItems = new CZelLastDocuments(nullptr, kMaxLastItems);
    QObject::connect(this, &QLineEdit::textChanged, [this] {
        const bool byProgram = m_ignoreEditChanged != 0;
        OnEditChanged(static_cast<unsigned int>(GetDlgCtrlID()));
        if (!byProgram)
            notifyParentOfChange();
    });
}

CZelEdit::~CZelEdit()
{
    UnhookControl();
    delete m_currentUndoItem;
    delete m_lastItems;
}

BOOL CZelEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    QWidget* p = parent ? ZelWidgetFromHwnd(parent->GetSafeHwnd()) : nullptr;
    if (!p)
        return FALSE;
    setParent(p);
    setGeometry(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
    SetDlgCtrlID(static_cast<int>(id));
    setReadOnly(style & kStyleReadOnly);
    setEchoMode(style & kStylePassword ? QLineEdit::Password : QLineEdit::Normal);
    m_initialized = 0;
    InitializeEdit();
    show();
    return TRUE;
}

BOOL CZelEdit::CreateInline(unsigned long style, const CRect& rect, CWnd* parent, unsigned int id, HFONT font)
{
    m_inline = 1;
    if (font)
        setFont(*reinterpret_cast<const QFont*>(font));
    setFrame(false);
    m_inlineContainer = dynamic_cast<CZelInlineControlContainer*>(parent);
    return Create(static_cast<DWORD>(style), rect, parent, id);
}

void CZelEdit::SetupInlineRect(CRect& container, CRect& control, HFONT, unsigned long)
{
    control = CRect(0, 0, container.Width(), container.Height());
}

// --- content ------------------------------------------------------------------------

int CZelEdit::IsEmpty() const
{
    CString t = GetRawString();
    TrimString(t, 1);
    return t.IsEmpty() ? 1 : 0;
}

CString CZelEdit::GetRawString() const { return m_currentValue; }

CString CZelEdit::GetString() const { return m_currentValue; }

int CZelEdit::SetString(const CString& text)
{
    if (!m_initialized)
        InitializeEdit();
    CZelKeepChangedByUserStatus keep(this);
    CZelNotifyEmptyChanged guard(this);
    m_currentValue = text;
    m_isEmpty = IsEmpty();
    // A value put in by the program starts a new history.
    m_undoRedo.Empty();
    if (m_currentUndoItem)
        FillUndoRedoItemWithCurrent(m_currentUndoItem);
    LimitTextValue();
    ShowValue();
    return 1;
}

CZelInputControl::eState CZelEdit::OnValidate(CString* reason)
{
    CString t = m_currentValue;
    TrimString(t, 1);
    return InternalValidate(t, reason);
}

void CZelEdit::Empty()
{
    CZelNotifyEmptyChanged guard(this);
    SetChangedByUser(0);
    m_currentValue.Empty();
    m_isEmpty = 1;
    CZelIgnoreEditChange ignore(this);
    setText(QString());
}

int CZelEdit::SetReadOnlyMode(int readOnly)
{
    const int r = CZelInputControl::SetReadOnlyMode(readOnly);
    if (isReadOnly() != (readOnly != 0))
        setReadOnly(readOnly != 0);
    if (m_button)
        m_button->setEnabled(!readOnly);
    if (m_spin)
        m_spin->setEnabled(!readOnly);
    PrepareColors();
    return r;
}

int CZelEdit::GetMinWidth() const
{
    int w = 0;
    if (m_spin)
        w += m_spin->width() - 2;
    if (m_button)
        w += m_button->width();
    return w;
}

BOOL CZelEdit::GetWindowBoundingRect(RECT* rect) const
{
    // The companions stand inside the edit's rectangle.
    return CZelInputControl::GetWindowBoundingRect(rect);
}

// --- settings -----------------------------------------------------------------------

void CZelEdit::GetMenu(HINSTANCE& instance, unsigned int& id) const
{
    instance = m_menuInstance;
    id = m_menuId;
}

void CZelEdit::SetMenu(HINSTANCE instance, unsigned int id)
{
    m_menuInstance = instance;
    m_menuId = id;
}

CString CZelEdit::GetDisplayFormat() const { return m_displayFormat; }

void CZelEdit::SetDisplayFormat(HINSTANCE instance, unsigned int id)
{
    if (const char* s = ZelFindResourceString(instance, id))
        SetDisplayFormat(CString(s));
}

void CZelEdit::SetDisplayFormat(const CString& format)
{
    m_displayFormat = format;
    if (m_initialized) {
        LimitTextValue();
        ShowValue();
    }
}

void CZelEdit::SetColorText(COLORREF colour) { m_colours[0] = colour; PrepareColors(); }
void CZelEdit::SetColorTextReadOnly(COLORREF colour) { m_colours[1] = colour; PrepareColors(); }
void CZelEdit::SetColorTextDisabled(COLORREF colour) { m_colours[2] = colour; PrepareColors(); }
void CZelEdit::SetColorBk(COLORREF colour) { m_colours[3] = colour; PrepareColors(); }
void CZelEdit::SetColorBkReadOnly(COLORREF colour) { m_colours[4] = colour; PrepareColors(); }
void CZelEdit::SetColorBkDisabled(COLORREF colour) { m_colours[5] = colour; PrepareColors(); }
COLORREF CZelEdit::GetColorText() const { return m_colours[0]; }
COLORREF CZelEdit::GetColorTextReadOnly() const { return m_colours[1]; }
COLORREF CZelEdit::GetColorTextDisabled() const { return m_colours[2]; }
COLORREF CZelEdit::GetColorBk() const { return m_colours[3]; }
COLORREF CZelEdit::GetColorBkReadOnly() const { return m_colours[4]; }
COLORREF CZelEdit::GetColorBkDisabled() const { return m_colours[5]; }

void CZelEdit::SetConversion(eConversion conversion) { m_conversion = conversion; }
CZelEdit::eConversion CZelEdit::GetConversion() const { return m_conversion; }

void CZelEdit::SetAllowedChars(eAllowedChars kind, CString* custom)
{
    m_allowedChars = kind;
    if (custom)
        m_customChars = *custom;
}

CZelEdit::eAllowedChars CZelEdit::GetAllowedChars() const { return m_allowedChars; }
void CZelEdit::SetNotAllowedChars(const char* chars) { m_notAllowedChars = CString(chars); }
CString CZelEdit::GetNotAllowedChars() const { return m_notAllowedChars; }
void CZelEdit::SetMinChars(unsigned int chars) { m_minChars = chars; }
unsigned int CZelEdit::GetMinChars() const { return m_minChars; }

void CZelEdit::SetMaxChars(unsigned int chars)
{
    m_maxChars = chars;
    if (m_initialized)
        LimitTextValue();
}

unsigned int CZelEdit::GetMaxChars() const { return m_maxChars; }
void CZelEdit::SetTrimLeft(int trim) { m_trimLeft = trim; }
int CZelEdit::GetTrimLeft() const { return m_trimLeft; }
void CZelEdit::SetTrimRight(int trim) { m_trimRight = trim; }
int CZelEdit::GetTrimRight() const { return m_trimRight; }
void CZelEdit::SetWrapRange(int wrap) { m_wrapRange = wrap; }
int CZelEdit::GetWrapRange() const { return m_wrapRange; }
void CZelEdit::SetSpinDelta(int delta) { m_spinDelta = delta; }
int CZelEdit::GetSpinDelta() const { return m_spinDelta; }
void CZelEdit::IgnoreEditChanged(int ignore) { m_ignoreEditChanged = ignore; }
int CZelEdit::IgnoreEditChanged() const { return m_ignoreEditChanged; }
void CZelEdit::IgnoreKillFocusAction(int ignore) { m_ignoreKillFocusAction = ignore; }
int CZelEdit::IgnoreKillFocusAction() const { return m_ignoreKillFocusAction; }

void CZelEdit::SetLastItemsIniFile(const char* path)
{
    m_lastItemsFile = CString(path);
    m_lastItems->IniFile(path);
}

void CZelEdit::SetLastItemsSection(const char* section)
{
    m_lastItemsSection = CString(section);
    m_lastItems->Section(section);
}

CString CZelEdit::GetLastItemsSection() const { return m_lastItemsSection; }

// --- commands -----------------------------------------------------------------------

int CZelEdit::selectionLength() const { return hasSelectedText() ? static_cast<int>(selectedText().size()) : 0; }

int CZelEdit::CanInsert() const
{
    return !GetReadOnlyMode() && !m_password && !const_cast<CZelEdit*>(this)->GetAllLastItems().empty();
}

int CZelEdit::CanUndo() const { return hasFocus() && !GetReadOnlyMode() && m_undoRedo.CanUndo(); }
int CZelEdit::CanRedo() const { return hasFocus() && !GetReadOnlyMode() && m_undoRedo.CanRedo(); }
int CZelEdit::CanCut() const { return !GetReadOnlyMode() && !m_password && hasSelectedText(); }
int CZelEdit::CanCopy() const { return !m_password && hasSelectedText(); }

int CZelEdit::CanPaste() const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return !GetReadOnlyMode() && data && data->hasText();
}

int CZelEdit::CanDelete() const
{
    return !GetReadOnlyMode() && (hasSelectedText() || cursorPosition() < static_cast<int>(text().size()));
}

int CZelEdit::CanBackspace() const { return !GetReadOnlyMode() && (hasSelectedText() || cursorPosition() > 0); }
int CZelEdit::CanSelectAll() const { return !text().isEmpty(); }

void CZelEdit::Insert(unsigned int id)
{
    CString t = GetLastItem(id);
    TrimString(t, 1);
    if (t.IsEmpty()) {
        Beep();
        return;
    }
    setText(q(t));
    setCursorPosition(static_cast<int>(text().size()));
}

void CZelEdit::Undo() { StepUndoRedo(false); }

void CZelEdit::Redo() { StepUndoRedo(true); }

void CZelEdit::StepUndoRedo(bool redo)
{
    if (!ControlOrChildHasFocus())
        return;
    if (!(redo ? CanRedo() : CanUndo())) {
        Beep();
        return;
    }
    auto* current = CopyUndoRedoItem(nullptr);
    FillUndoRedoItemWithCurrent(current);
    auto* back = dynamic_cast<CZelEditUndoRedoItem*>(redo ? m_undoRedo.Redo(current) : m_undoRedo.Undo(current));
    if (!back)
        return;
    CString t = back->m_text;
    TrimString(t, 1);
    InternalSetWindowTextNoTrimNoUndoRedo(t);
    if (back->m_start != CZelEditUndoRedoItem::NoSelection && back->m_end != CZelEditUndoRedoItem::NoSelection)
        setSelection(back->m_start, back->m_end - back->m_start);
    delete back;
}

void CZelEdit::Cut()
{
    if (!CanCut()) {
        Beep();
        return;
    }
    if (SetClipboardText(c(selectedText())))
        Delete();
}

void CZelEdit::Copy()
{
    if (!CanCopy()) {
        Beep();
        return;
    }
    SetClipboardText(c(selectedText()));
}

void CZelEdit::Paste()
{
    if (!ControlOrChildHasFocus())
        return;
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (GetReadOnlyMode() || !data || !data->hasText()) {
        Beep();
        return;
    }
    CString fetched;
    GetClipboardText(fetched);
    // Filtered and converted, but not trimmed: blanks go when the control is left.
    TrimString(fetched, 0);
    QString insert = q(fetched);
    if (insert.isEmpty()) {
        Beep();
        return;
    }
    const QString current = text();
    const int selStart = hasSelectedText() ? selectionStart() : cursorPosition();
    const int selLen = selectionLength();
    if (m_maxChars != 0xFFFFFFFFu) {
        // Counted in characters, not UTF-16 units, so that no character is split.
        QList<uint> chars = insert.toUcs4();
        const long long insertLength = static_cast<long long>(chars.size());
        const long long newLength = static_cast<long long>(current.toUcs4().size()) + insertLength -
                                    static_cast<long long>(selectedText().toUcs4().size());
        const long long excess = newLength - static_cast<long long>(m_maxChars);
        if (excess > 0) {
            if (excess >= insertLength) {
                Beep();
                return;
            }
            chars.resize(static_cast<qsizetype>(insertLength - excess));
            insert = QString::fromUcs4(reinterpret_cast<const char32_t*>(chars.constData()), chars.size());
        }
    }
    QString value = current;
    value.remove(selStart, selLen);
    value.insert(selStart, insert);
    setText(value);
    setCursorPosition(selStart + static_cast<int>(insert.size()));
}

void CZelEdit::Delete()
{
    if (!CanDelete()) {
        Beep();
        return;
    }
    QString value = text();
    if (hasSelectedText()) {
        const int start = selectionStart();
        value.remove(start, selectionLength());
        setText(value);
        setCursorPosition(start);
        return;
    }
    const int p = cursorPosition();
    // A character outside the basic plane is two UTF-16 units; both go.
    value.remove(p, value.at(p).isHighSurrogate() && p + 1 < value.size() ? 2 : 1);
    setText(value);
    setCursorPosition(p);
}

void CZelEdit::Backspace()
{
    if (!CanBackspace()) {
        Beep();
        return;
    }
    if (hasSelectedText()) {
        Delete();
        return;
    }
    QString value = text();
    const int p = cursorPosition();
    const int width = p >= 2 && value.at(p - 1).isLowSurrogate() && value.at(p - 2).isHighSurrogate() ? 2 : 1;
    value.remove(p - width, width);
    setText(value);
    setCursorPosition(p - width);
}

void CZelEdit::SelectAll()
{
    if (!CanSelectAll()) {
        Beep();
        return;
    }
    selectAll();
}

void CZelEdit::RemoveAllLastItems() { m_lastItems->RemoveAllDocuments(); }

void CZelEdit::ContextMenu(CWnd*, CPoint point)
{
    std::vector<CString> items;
    if (!m_password) {
        items = GetAllLastItems();
        for (std::size_t i = items.size(); i-- > 0;) {
            CString t = items[i];
            TrimString(t, 1);
            if (t.IsEmpty())
                items.erase(items.begin() + static_cast<long>(i));
        }
    }
    CZelMenuPopUpEdit menu(this, this);
    menu.LoadMenu(CZelMenuPopUpEdit::MenuTemplate(), items);
    menu.Track(point);
}

void CZelEdit::DispatchSpinDeltapos(int up, int delta) { OnSpinDeltapos(up, delta); }

void CZelEdit::DispatchButtonClicked() { OnButtonClicked(); }

BOOL CZelEdit::SubclassDlgItem(unsigned int id, CWnd* parent)
{
    if (!parent)
        return FALSE;
    HWND h = ::GetDlgItem(parent->GetSafeHwnd(), static_cast<int>(id));
    if (h && h != m_hWnd)
        return SubclassWindow(h);
    if (h != m_hWnd)
        return FALSE;
    m_initialized = 0;
    InitializeEdit();
    return TRUE;
}

BOOL CZelEdit::SubclassWindow(HWND hWnd)
{
    QWidget* old = ZelWidgetFromHwnd(hWnd);
    if (!old)
        return FALSE;
    if (old != this) {
        QWidget* parent = old->parentWidget();
        setParent(parent);
        setGeometry(old->geometry());
        SetDlgCtrlID(::GetDlgCtrlID(hWnd));
        if (auto* e = qobject_cast<QLineEdit*>(old)) {
            setReadOnly(e->isReadOnly());
            setEchoMode(e->echoMode());
            setText(e->text());
        }
        if (parent && parent->layout())
            delete parent->layout()->replaceWidget(old, this);
        setVisible(!old->isHidden());
        // The old window lingers until the event loop deletes it; it must not
        // answer to the id meanwhile.
        ZelSetDlgCtrlID(hWnd, 0);
        old->hide();
        old->deleteLater();
    }
    m_initialized = 0;
    InitializeEdit();
    return TRUE;
}

void CZelEdit::OnEditChanged(unsigned int)
{
    if (m_ignoreEditChanged)
        return;
    CZelNotifyEmptyChanged guard(this);
    m_currentValue = c(text());
    m_isEmpty = IsEmpty();
    SetChangedByUser(1);
    if (!m_noUndo)
        AddPreviousToUndoRedo();
    if (m_currentUndoItem)
        FillUndoRedoItemWithCurrent(m_currentUndoItem);
}

void CZelEdit::OnButtonClicked() {}

void CZelEdit::OnSpinDeltapos(int, int) {}

void CZelEdit::InitializeEdit()
{
    m_initialized = 1;
    m_currentValue.Empty();
    SetChangedByUser(0);
    HookControl();
    // The window that holds the edit as a dialog holds its items, past any group box.
    QWidget* parent = ZelWidgetFromHwnd(zelcontrols::ContainerOf(m_hWnd));
    m_parentIsDialog = qobject_cast<QDialog*>(parent) != nullptr;
    m_parentIsFormView = parent && parent->property("zelFormView").toBool();
    m_parentIsEdit = dynamic_cast<CZelEdit*>(parent) != nullptr;
    if (isReadOnly())
        SetReadOnlyMode(1);
    if (m_button)
        m_button->setEnabled(!GetReadOnlyMode());
    if (m_spin)
        m_spin->setEnabled(!GetReadOnlyMode());
    m_password = echoMode() != QLineEdit::Normal;
    PrepareColors();
    LimitTextValue();
    delete m_currentUndoItem;
    m_currentUndoItem = nullptr;
    if (CObject* o = m_undoItemClass ? m_undoItemClass->CreateObject() : nullptr) {
        m_currentUndoItem = dynamic_cast<CZelEditUndoRedoItem*>(o);
        if (!m_currentUndoItem)
            delete o;
    }
    if (!m_currentUndoItem)
        m_currentUndoItem = new CZelEditUndoRedoItem;
    if (m_lastItemsSection.IsEmpty()) {
        CString parentClass;
        if (CWnd* p = CWnd::FromHandlePermanent(ZelHwndFromWidget(parent)))
            parentClass = p->GetRuntimeClass()->m_lpszClassName;
        else if (parent)
            parentClass = parent->metaObject()->className();
        CString section;
        section.Format("%s::%s::%d", parentClass.GetString(), GetRuntimeClass()->m_lpszClassName, GetDlgCtrlID());
        m_lastItemsSection = section;
    }
    m_lastItems->Section(m_lastItemsSection);
    m_selectOnFocus = 1;
    // Text the window had before it became this edit is its value.
    if (!text().isEmpty()) {
        CZelNotifyEmptyChanged guard(this);
        m_currentValue = c(text());
        m_isEmpty = IsEmpty();
        FillUndoRedoItemWithCurrent(m_currentUndoItem);
        ShowValue();
    }
}

CZelInputControl::eState CZelEdit::InternalValidate(const char* text, CString* reason)
{
    if (reason)
        reason->Empty();
    if (!text || !*text)
        return GetEmptyAllowed() ? eStateValid : eStateEmpty;
    const int length = charCount(text);
    if (static_cast<unsigned long long>(length) < m_minChars) {
        if (reason) {
            static const CString format = zelcontrols::LoadControlsString(IDS_ZEL_EDIT_TOO_FEW_CHARS);
            reason->Format(format.GetString(), length, static_cast<int>(m_minChars));
        }
        return eStateInvalid;
    }
    if (m_maxChars != 0xFFFFFFFFu && static_cast<unsigned long long>(length) > m_maxChars) {
        if (reason) {
            static const CString format = zelcontrols::LoadControlsString(IDS_ZEL_EDIT_TOO_MANY_CHARS);
            reason->Format(format.GetString(), length, static_cast<int>(m_maxChars));
        }
        return eStateInvalid;
    }
    return eStateValid;
}

CString CZelEdit::GetLastItem(unsigned int id)
{
    if (id < kFirstLastItemCommand)
        return CString();
    return m_lastItems->GetDocument(id - kFirstLastItemCommand);
}

std::vector<CString> CZelEdit::GetAllLastItems()
{
    if (m_password)
        return {};
    return m_lastItems->GetAllDocuments();
}

void CZelEdit::AddCurrentToLastItems()
{
    if (m_password)
        return;
    CString copy = m_currentValue;
    TrimString(copy, 1);
    if (!copy.IsEmpty() && InternalValidate(copy, nullptr) == eStateValid)
        m_lastItems->AddDocument(copy);
}

void CZelEdit::AddPreviousToUndoRedo()
{
    if (m_currentUndoItem)
        m_undoRedo.AddPrevious(CopyUndoRedoItem(m_currentUndoItem));
}

CZelEditUndoRedoItem* CZelEdit::CopyUndoRedoItem(CZelEditUndoRedoItem* item)
{
    CZelEditUndoRedoItem* copy = nullptr;
    if (CObject* o = m_undoItemClass ? m_undoItemClass->CreateObject() : nullptr) {
        copy = dynamic_cast<CZelEditUndoRedoItem*>(o);
        if (!copy)
            delete o;
    }
    if (!copy)
        copy = new CZelEditUndoRedoItem;
    if (item) {
        copy->m_text = item->m_text;
        copy->m_start = item->m_start;
        copy->m_end = item->m_end;
    }
    return copy;
}

void CZelEdit::FillUndoRedoItemWithCurrent(CZelEditUndoRedoItem* item)
{
    if (!item)
        return;
    item->m_text = m_currentValue;
    if (hasSelectedText()) {
        item->m_start = selectionStart();
        item->m_end = selectionEnd();
    } else {
        item->m_start = item->m_end = cursorPosition();
    }
}

void CZelEdit::PrepareColors()
{
    QPalette p = QApplication::palette(this);
    const bool readOnly = GetReadOnlyMode() != 0;
    const COLORREF text = readOnly ? m_colours[1] : m_colours[0];
    const COLORREF bk = readOnly ? m_colours[4] : m_colours[3];
    for (QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive}) {
        if (!isUnset(text))
            p.setColor(g, QPalette::Text, colour(text));
        if (!isUnset(bk))
            p.setColor(g, QPalette::Base, colour(bk));
        else if (!isUnset(text))
            p.setColor(g, QPalette::Base, colour(GetSysColor(readOnly ? 15 : 5)));
    }
    if (!isUnset(m_colours[2]))
        p.setColor(QPalette::Disabled, QPalette::Text, colour(m_colours[2]));
    if (!isUnset(m_colours[5]))
        p.setColor(QPalette::Disabled, QPalette::Base, colour(m_colours[5]));
    else if (!isUnset(m_colours[2]))
        p.setColor(QPalette::Disabled, QPalette::Base, colour(GetSysColor(15)));
    setPalette(p);
}

void CZelEdit::Convert(CString& text) const
{
    if (m_conversion == eConversionUpper)
        text = c(q(text).toUpper());
    else if (m_conversion == eConversionLower)
        text = c(q(text).toLower());
}

void CZelEdit::Convert(char& ch) const
{
    const auto u = static_cast<unsigned char>(ch);
    if (u >= 0x80)
        return;
    if (m_conversion == eConversionUpper && ch >= 'a' && ch <= 'z')
        ch = static_cast<char>(ch - 'a' + 'A');
    else if (m_conversion == eConversionLower && ch >= 'A' && ch <= 'Z')
        ch = static_cast<char>(ch - 'A' + 'a');
}

BOOL CZelEdit::CharAllowed(char ch) const
{
    if (ch == '\0' || m_notAllowedChars.Find(ch) >= 0)
        return FALSE;
    const auto u = static_cast<unsigned char>(ch);
    const bool alpha = (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z');
    const bool digit = u >= '0' && u <= '9';
    switch (m_allowedChars) {
    case eAllowedCharsAlpha:
        return alpha;
    case eAllowedCharsDigits:
        return digit;
    case eAllowedCharsAlphaNumeric:
        return alpha || digit;
    case eAllowedCharsCustom:
        return m_customChars.Find(ch) >= 0;
    default:
        return TRUE;
    }
}

// One character, possibly outside ASCII: ASCII goes through the virtual test, others
// by the same rules on their Unicode properties.
bool CZelEdit::charAllowed(const QString& ch) const
{
    if (ch.size() == 1 && ch[0].unicode() < 0x80)
        return CharAllowed(static_cast<char>(ch[0].unicode()));
    const CString bytes = c(ch);
    if (m_notAllowedChars.Find(bytes) >= 0)
        return false;
    const char32_t cp = ch.toUcs4().value(0);
    switch (m_allowedChars) {
    case eAllowedCharsAlpha:
        return QChar::isLetter(cp);
    case eAllowedCharsDigits:
        return false;
    case eAllowedCharsAlphaNumeric:
        return QChar::isLetterOrNumber(cp);
    case eAllowedCharsCustom:
        return m_customChars.Find(bytes) >= 0;
    default:
        return true;
    }
}

void CZelEdit::RemoveNotAllowedChars(CString& text) const
{
    const QList<uint> cps = q(text).toUcs4();
    QList<uint> kept = cps;
    for (qsizetype i = cps.size(); i-- > 0;) {
        const char32_t cp = cps[i];
        if (!charAllowed(QString::fromUcs4(&cp, 1)))
            kept.removeAt(i);
    }
    if (kept.size() != cps.size())
        text = c(QString::fromUcs4(reinterpret_cast<const char32_t*>(kept.constData()), kept.size()));
}

void CZelEdit::InternalSetWindowTextNoTrimNoUndoRedo(const char* t)
{
    m_noUndo = 1;
    setText(QString::fromUtf8(t ? t : ""));
    m_noUndo = 0;
}

BOOL CZelEdit::TrimString(CString& text, int trim) const
{
    const CString before = text;
    Convert(text);
    RemoveNotAllowedChars(text);
    if (trim) {
        if (m_trimLeft)
            text.TrimLeft();
        if (m_trimRight)
            text.TrimRight();
    }
    return text != before;
}

BOOL CZelEdit::GetClipboardText(CString& text) const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data || !data->hasText())
        return FALSE;
    text = c(data->text());
    return TRUE;
}

BOOL CZelEdit::SetClipboardText(const char* text) const
{
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text ? text : ""));
    return TRUE;
}

BOOL CZelEdit::ControlOrChildHasFocus() const
{
    QWidget* f = QApplication::focusWidget();
    return f && (f == this || isAncestorOf(f));
}

void CZelEdit::ConvertDisplayToInputPos(int&) {}

void CZelEdit::ShowValue()
{
    if (m_showInProgress)
        return;
    m_showInProgress = 1;
    if (!m_displayFormat.IsEmpty() && !(hasFocus() && !GetReadOnlyMode()))
        ShowDisplayValue();
    else
        ShowInputValue();
    m_showInProgress = 0;
}

void CZelEdit::ShowDisplayValue()
{
    CZelIgnoreEditChange ignore(this);
    setText(q(m_currentValue));
}

void CZelEdit::ShowInputValue()
{
    CZelIgnoreEditChange ignore(this);
    setText(q(m_currentValue));
}

void CZelEdit::LimitTextValue()
{
    if (m_displayFormat.IsEmpty() || (hasFocus() && !GetReadOnlyMode()))
        LimitTextInputValue();
    else
        LimitTextDisplayValue();
}

// The line edit's own maximum would cut the text that the program sets, and the
// display form too; the limit is kept here and applied to typing only.
void CZelEdit::LimitTextDisplayValue() { m_typingLimit = -1; }

void CZelEdit::LimitTextInputValue()
{
    m_typingLimit = m_maxChars == 0 || m_maxChars == 0xFFFFFFFFu ? -1 : static_cast<long long>(m_maxChars);
}

void CZelEdit::Beep() { QApplication::beep(); }

BOOL CZelEdit::CreateEditButton(const char* text)
{
    if (m_button)
        return TRUE;
    const QString label = QString::fromUtf8(text ? text : "");
    m_button = new CZelEditButton(this, label, this);
    ZelSetDlgCtrlID(ZelHwndFromWidget(m_button), nextFreeDlgItemId(parentWidget()));
    m_button->setFont(font());
    m_button->setEnabled(!GetReadOnlyMode());
    m_button->show();
    placeCompanions();
    OnDlgCtrlChildAdded(ZelHwndFromWidget(m_button));
    return TRUE;
}

void CZelEdit::DeleteEditButton()
{
    if (!m_button)
        return;
    OnUnhookDlgCtrl(ZelHwndFromWidget(m_button));
    delete m_button;
    m_button = nullptr;
    placeCompanions();
}

BOOL CZelEdit::CreateSpinButton()
{
    if (m_spin)
        return TRUE;
    m_spin = new CZelEditSpin(this);
    ZelSetDlgCtrlID(ZelHwndFromWidget(m_spin), nextFreeDlgItemId(parentWidget()));
    m_spin->setEnabled(!GetReadOnlyMode());
    SpinButtonSetBuddy();
    m_spin->show();
    placeCompanions();
    OnDlgCtrlChildAdded(ZelHwndFromWidget(m_spin));
    return TRUE;
}

void CZelEdit::DeleteSpinButton()
{
    if (!m_spin)
        return;
    OnUnhookDlgCtrl(ZelHwndFromWidget(m_spin));
    delete m_spin;
    m_spin = nullptr;
    placeCompanions();
}

void CZelEdit::SpinButtonSetBuddy()
{
    // The spin is a child of the edit and follows it by itself.
}

QWidget* CZelEdit::GetSpinButton() const { return m_spin; }

// The companions stand inside the edit's rectangle at its right end (spin
// outermost), and the text area gives way to them, so that a layout that places the
// edit places them too.
void CZelEdit::placeCompanions()
{
    if (m_placing)
        return;
    m_placing = true;
    const int h = height();
    int right = width();
    if (m_spin) {
        const int w = std::max(style()->pixelMetric(QStyle::PM_ScrollBarExtent), 12);
        m_spin->setGeometry(right - w, 0, w, h);
        right -= w;
    }
    if (m_button) {
        const int w = std::max(m_button->fontMetrics().horizontalAdvance(m_button->text()) + 12, h);
        m_button->setGeometry(right - w, 0, w, h);
        right -= w;
    }
    setTextMargins(0, 0, width() - right, 0);
    m_placing = false;
}

void CZelEdit::notifyParentOfChange()
{
    const HWND target = m_container ? m_container : ::GetParent(m_hWnd);
    ::SendMessage(target, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID()), EN_CHANGE),
                  reinterpret_cast<LPARAM>(m_hWnd));
}

// --- messages and events ----------------------------------------------------------

LRESULT CZelEdit::WindowProc(UINT message, WPARAM wParam, LPARAM)
{
    UINT command = message;
    if (message == WM_COMMAND)
        command = LOWORD(wParam);
    if (command == WM_UNDO)
        Undo();
    else if (command == kRedoCommand)
        Redo();
    else if (command == WM_CUT)
        Cut();
    else if (command == WM_COPY)
        Copy();
    else if (command == WM_PASTE)
        Paste();
    else if (command == WM_CLEAR || command == WM_ZEL_EDIT_DELETE)
        Delete();
    else if (command == WM_ZEL_EDIT_SELECT_ALL)
        SelectAll();
    else if (message == WM_COMMAND && command >= kFirstLastItemCommand &&
             command < kFirstLastItemCommand + kMaxLastItems)
        Insert(command);
    else
        return 0;
    return 1;
}

bool CZelEdit::event(QEvent* e)
{
    if (e->type() == QEvent::Polish && !m_initialized)
        InitializeEdit();
    // A show or hide that didn't come through setVisible is the parent's.
    if ((e->type() == QEvent::Show || e->type() == QEvent::Hide) && !m_inSetVisible && !e->spontaneous())
        OnShowWindow(e->type() == QEvent::Show, e->type() == QEvent::Show ? SW_PARENTOPENING : SW_PARENTCLOSING);
    // Dropped text would bypass the character filter; the edit is no drop target.
    if (e->type() == QEvent::DragEnter || e->type() == QEvent::DragMove || e->type() == QEvent::Drop) {
        e->ignore();
        return true;
    }
    // Composed characters (dead keys, input methods) are typed characters too.
    if (e->type() == QEvent::InputMethod) {
        auto* im = static_cast<QInputMethodEvent*>(e);
        if (im->preeditString().isEmpty() && im->replacementLength() == 0 && !im->commitString().isEmpty()) {
            for (char32_t cp : im->commitString().toUcs4())
                OnChar(QString::fromUcs4(&cp, 1));
            e->accept();
            return true;
        }
    }
    if (e->type() == QEvent::KeyPress) {
        auto* k = static_cast<QKeyEvent*>(e);
        const int key = k->key();
        const bool tab = (key == Qt::Key_Tab || key == Qt::Key_Backtab) &&
                         !(k->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
        const bool enterOrEscape = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape;
        if (tab || enterOrEscape) {
            const UINT code = OnGetDlgCode();
            if ((tab && (code & (DLGC_WANTTAB | DLGC_WANTALLKEYS))) || (enterOrEscape && (code & DLGC_WANTALLKEYS))) {
                keyPressEvent(k);
                k->accept();
                return true;
            }
        }
    }
    return QLineEdit::event(e);
}

void CZelEdit::keyPressEvent(QKeyEvent* e)
{
    if (!m_initialized)
        InitializeEdit();
    const Qt::KeyboardModifiers mods = e->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier |
                                                         Qt::MetaModifier);
    const int key = e->key();
    if (mods == Qt::ControlModifier) {
        switch (key) {
        case Qt::Key_Z: Undo(); return;
        case Qt::Key_Y: Redo(); return;
        case Qt::Key_X: Cut(); return;
        case Qt::Key_C: Copy(); return;
        case Qt::Key_V: Paste(); return;
        case Qt::Key_A: SelectAll(); return;
        default: break;
        }
    }
    if (mods == Qt::ShiftModifier && key == Qt::Key_Insert) {
        Paste();
        return;
    }
    // The line edit binds further keys to its own undo and clipboard; those keys
    // take the library's commands, so that its stack, filter and beeps hold.
    if (e->matches(QKeySequence::Undo)) {
        Undo();
        return;
    }
    if (e->matches(QKeySequence::Redo)) {
        Redo();
        return;
    }
    if (e->matches(QKeySequence::Cut)) {
        Cut();
        return;
    }
    if (e->matches(QKeySequence::Copy)) {
        Copy();
        return;
    }
    if (e->matches(QKeySequence::Paste)) {
        Paste();
        return;
    }
    if (mods == Qt::NoModifier) {
        switch (key) {
        case Qt::Key_Delete:
            if (CanDelete())
                Delete();
            return;
        case Qt::Key_Backspace:
            if (CanBackspace())
                Backspace();
            return;
        case Qt::Key_Up:
            if (m_spin)
                m_spin->step(true);
            else
                DispatchSpinDeltapos(1, -m_spinDelta);
            return;
        case Qt::Key_Down:
            if (m_spin)
                m_spin->step(false);
            else
                DispatchSpinDeltapos(0, m_spinDelta);
            return;
        default:
            break;
        }
    }
    const QString t = e->text();
    const bool typed = !t.isEmpty() && !(mods & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) &&
                       std::all_of(t.begin(), t.end(), [](QChar ch) { return ch.unicode() >= 32 && ch != QChar(0x7F); });
    if (typed) {
        const QList<uint> cps = t.toUcs4();
        for (uint cp : cps) {
            const char32_t c32 = cp;
            OnChar(QString::fromUcs4(&c32, 1));
        }
        e->accept();
        return;
    }
    QLineEdit::keyPressEvent(e);
}

void CZelEdit::OnChar(const QString& ch)
{
    if (ch.isEmpty() || ch[0].unicode() < 32)
        return;
    QString out = ch;
    if (ch.size() == 1 && ch[0].unicode() < 0x80) {
        char cc = static_cast<char>(ch[0].unicode());
        Convert(cc);
        out = QString(QChar(cc));
    } else if (m_conversion == eConversionUpper) {
        out = ch.toUpper();
    } else if (m_conversion == eConversionLower) {
        out = ch.toLower();
    }
    if (!charAllowed(out)) {
        Beep();
        return;
    }
    if (isReadOnly())
        return;
    if (m_typingLimit >= 0) {
        const long long kept = static_cast<long long>(text().toUcs4().size()) -
                               (hasSelectedText() ? static_cast<long long>(selectedText().toUcs4().size()) : 0);
        if (kept + 1 > m_typingLimit) {
            Beep();
            return;
        }
    }
    insert(out);
}

void CZelEdit::focusInEvent(QFocusEvent* e) { OnSetFocus(e); }

void CZelEdit::focusOutEvent(QFocusEvent* e) { OnKillFocus(e); }

void CZelEdit::OnSetFocus(QFocusEvent* e)
{
    if (!m_initialized)
        InitializeEdit();
    QLineEdit::focusInEvent(e);
    const bool tab = e->reason() == Qt::TabFocusReason || e->reason() == Qt::BacktabFocusReason;
    const bool click = e->reason() == Qt::MouseFocusReason;
    if (e->reason() == Qt::PopupFocusReason)
        return; // back from our own context menu: nothing changed
    if (!m_displayFormat.IsEmpty()) {
        if (GetReadOnlyMode()) {
            LimitTextDisplayValue();
            ShowDisplayValue();
        } else {
            LimitTextInputValue();
            ShowInputValue();
        }
        if (click) {
            // The press that follows puts the caret where the user pointed.
        } else if (tab || (m_inline && m_selectOnFocus)) {
            selectAll();
        } else {
            deselect();
        }
    } else if (parentWidget()) {
        bool select = tab || (m_inline && m_selectOnFocus);
        if (!m_parentIsDialog && !m_inline)
            select = false;
        if (select)
            selectAll();
        else if (tab)
            deselect();
    }
    m_selectOnFocus = 0;
}

void CZelEdit::OnKillFocus(QFocusEvent* e)
{
    if (e->reason() == Qt::PopupFocusReason) {
        // Our context menu took the focus for a moment; the edit is not left.
        QLineEdit::focusOutEvent(e);
        return;
    }
    CZelNotifyEmptyChanged guard(this);
    QLineEdit::focusOutEvent(e);
    if (m_ignoreKillFocusAction || !::IsWindow(m_hWnd))
        return;
    CString value = m_currentValue;
    if (TrimString(value, 1))
        InternalSetWindowTextNoTrimNoUndoRedo(value);
    AddCurrentToLastItems();
    if (m_displayFormat.IsEmpty()) {
        LimitTextInputValue();
        ShowInputValue();
    } else {
        LimitTextDisplayValue();
        ShowDisplayValue();
    }
}

void CZelEdit::mousePressEvent(QMouseEvent* e)
{
    m_caretPos = cursorPositionAt(e->position().toPoint());
    m_caretPending = 1;
    QLineEdit::mousePressEvent(e);
    m_caretPending = 0;
}

void CZelEdit::contextMenuEvent(QContextMenuEvent* e)
{
    if (!hasFocus())
        setFocus(Qt::MouseFocusReason);
    ContextMenu(this, CPoint(e->globalPos().x(), e->globalPos().y()));
    e->accept();
}

void CZelEdit::changeEvent(QEvent* e)
{
    QLineEdit::changeEvent(e);
    if (e->type() == QEvent::EnabledChange || e->type() == QEvent::ReadOnlyChange) {
        if (e->type() == QEvent::ReadOnlyChange && isReadOnly() != (GetReadOnlyMode() != 0))
            SetReadOnlyMode(isReadOnly() ? 1 : 0);
    }
}

void CZelEdit::setVisible(bool visible)
{
    const bool before = m_inSetVisible;
    m_inSetVisible = true;
    {
        CZelNotifyEmptyChanged guard(this);
        QLineEdit::setVisible(visible);
    }
    m_inSetVisible = before;
    OnShowWindow(visible, 0);
}

void CZelEdit::OnShowWindow(BOOL, UINT) {}

UINT CZelEdit::OnGetDlgCode()
{
    QWidget* parent = parentWidget();
    const bool parentIsEdit = dynamic_cast<CZelEdit*>(parent) != nullptr;
    if (!m_inline && !parentIsEdit)
        return 0;
    // An inline edit in a list or grid has no dialog to take Enter and Escape.
    const bool parentIsDialog = qobject_cast<QDialog*>(parent) != nullptr;
    const bool parentIsFormView = parent && parent->property("zelFormView").toBool();
    if (parent && !parentIsDialog && !parentIsFormView && !parentIsEdit)
        return DLGC_WANTALLKEYS;
    return DLGC_WANTTAB;
}

void CZelEdit::moveEvent(QMoveEvent* e) { QLineEdit::moveEvent(e); }

void CZelEdit::resizeEvent(QResizeEvent* e)
{
    QLineEdit::resizeEvent(e);
    placeCompanions();
}
