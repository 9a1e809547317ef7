// The single-line edit from which all text input of the library derives, on
// QLineEdit. Over a plain line edit it adds:
//   - filtering and conversion of typed characters (SetAllowedChars,
//     SetNotAllowedChars, SetConversion), a minimum and maximum length, trimming;
//   - two forms of the content: the input form while the user types and the display
//     form (GetDisplayFormat) while the control has no focus;
//   - colours for normal, read-only and disabled state (COLORREF, -1 = system's);
//   - its own undo and redo, clipboard commands that beep when they can't act, a
//     context menu with the last valid entries (kept in the profile, never for
//     password edits);
//   - an optional button and spin control beside the edit.
//
//   CZelEdit* e = new CZelEdit(dialog);
//   ZelSetDlgCtrlID(ZelHwndFromWidget(e), 1001);
//   e->SetMaxChars(8);
//   e->SetAllowedChars(CZelEdit::eAllowedCharsDigits);
//   e->InitializeEdit();   // or automatically before the edit is first shown
//
// Lengths count characters (Unicode code points of the UTF-8 text). Keys: Ctrl+Z
// undo, Ctrl+Y redo, Ctrl+X cut, Ctrl+C copy, Ctrl+V and Shift+Insert paste, Ctrl+A
// select all; Up and Down go to OnSpinDeltapos unless a spin control does that.
#pragma once

#include <Zel260/controls/CZelEditUndoRedoItem.h>
#include <Zel260/controls/CZelUndoRedo.h>
#include <Zel260/controls/qt/CZelInputControl.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>
#include <Zel260/services/CZelLastDocuments.h>

#include <QLineEdit>
#include <QPushButton>

#include <vector>

class CZelEdit : public QLineEdit, public CWnd, public CZelInputControl, public ZelMessageTarget {
    DECLARE_DYNCREATE(CZelEdit)

public:
    enum eConversion { eConversionNone = 0, eConversionUpper = 1, eConversionLower = 2 };
    enum eAllowedChars {
        eAllowedCharsAll = 0,
        eAllowedCharsAlpha = 1,        // letters
        eAllowedCharsDigits = 2,       // "0123456789"
        eAllowedCharsAlphaNumeric = 3, // letters and digits
        eAllowedCharsCustom = 4,       // the characters of the custom string
    };
    // The first command id of the last items in the context menu.
    static constexpr UINT kFirstLastItemCommand = 2024;
    static constexpr UINT kMaxLastItems = 10;
    // EM_REDO: the redo command of the context menu.
    static constexpr UINT kRedoCommand = 0x454;

    // The button at the right end of the edit; a click goes to OnButtonClicked.
    class CZelEditButton : public QPushButton {
    public:
        CZelEditButton(CZelEdit* edit, const QString& text, QWidget* parent);
        CZelEdit* m_edit;
    };
    // The spin control beside the edit; a step goes to OnSpinDeltapos.
    class CZelEditSpin;

    // Brackets a change that must not count as the user's (IgnoreEditChanged).
    class CZelIgnoreEditChange {
    public:
        explicit CZelIgnoreEditChange(CZelEdit* edit) : m_edit(edit), m_before(edit->IgnoreEditChanged())
        {
            m_edit->IgnoreEditChanged(1);
        }
        ~CZelIgnoreEditChange() { m_edit->IgnoreEditChanged(m_before); }
        CZelIgnoreEditChange(const CZelIgnoreEditChange&) = delete;
        CZelIgnoreEditChange& operator=(const CZelIgnoreEditChange&) = delete;

    private:
        CZelEdit* m_edit;
        int m_before;
    };

    explicit CZelEdit(QWidget* parent = nullptr);
    ~CZelEdit() override;

    using CZelInputControl::operator=;

    // Defaults of trim left and trim right for edits made from now on (both 1).
    static void SetTrimLeftDefault(int trim);
    static int GetTrimLeftDefault();
    static void SetTrimRightDefault(int trim);
    static int GetTrimRightDefault();

    // Creates the edit as a child of `parent` at `rect` with id `id` and
    // initialises it. Style bits: 0x800 read-only, 0x20 password. FALSE for a null
    // parent.
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Creates the edit without a frame inside an inline container (`parent`), in
    // `font` (a QFont*, may be null), marked inline.
    BOOL CreateInline(unsigned long style, const CRect& rect, CWnd* parent, unsigned int id, HFONT font) override;
    // The container covers the cell; the edit fills the container.
    void SetupInlineRect(CRect& container, CRect& control, HFONT font, unsigned long flags) override;

    // --- the input control's operations
    int IsEmpty() const override;
    CString GetRawString() const override;
    CString GetString() const override;
    int SetString(const CString& text) override;
    using CZelInputControl::SetString;
    eState OnValidate(CString* reason) override;
    int SetReadOnlyMode(int readOnly) override;
    int GetMinWidth() const override;
    BOOL GetWindowBoundingRect(RECT* rect) const override;
    // Empties the content; the result doesn't count as the user's change.
    virtual void Empty();

    // --- settings
    virtual void GetMenu(HINSTANCE& instance, unsigned int& id) const;
    virtual void SetMenu(HINSTANCE instance, unsigned int id);
    virtual CString GetDisplayFormat() const;
    // The display format from a string resource (no change when absent).
    virtual void SetDisplayFormat(HINSTANCE instance, unsigned int id);
    virtual void SetDisplayFormat(const CString& format);
    virtual void SetColorText(COLORREF colour);
    virtual void SetColorTextReadOnly(COLORREF colour);
    virtual void SetColorTextDisabled(COLORREF colour);
    virtual void SetColorBk(COLORREF colour);
    virtual void SetColorBkReadOnly(COLORREF colour);
    virtual void SetColorBkDisabled(COLORREF colour);
    virtual COLORREF GetColorText() const;
    virtual COLORREF GetColorTextReadOnly() const;
    virtual COLORREF GetColorTextDisabled() const;
    virtual COLORREF GetColorBk() const;
    virtual COLORREF GetColorBkReadOnly() const;
    virtual COLORREF GetColorBkDisabled() const;
    virtual void SetConversion(eConversion conversion);
    virtual eConversion GetConversion() const;
    // `custom` (may be null) holds the characters of eAllowedCharsCustom.
    virtual void SetAllowedChars(eAllowedChars kind, CString* custom = nullptr);
    virtual eAllowedChars GetAllowedChars() const;
    // Characters refused whatever the allowed kind; null counts as "".
    virtual void SetNotAllowedChars(const char* chars);
    virtual CString GetNotAllowedChars() const;
    virtual void SetMinChars(unsigned int chars);
    virtual unsigned int GetMinChars() const;
    // 0xFFFFFFFF (the default) means no limit.
    virtual void SetMaxChars(unsigned int chars);
    virtual unsigned int GetMaxChars() const;
    virtual void SetTrimLeft(int trim);
    virtual int GetTrimLeft() const;
    virtual void SetTrimRight(int trim);
    virtual int GetTrimRight() const;
    virtual void SetWrapRange(int wrap);
    virtual int GetWrapRange() const;
    virtual void SetSpinDelta(int delta);
    virtual int GetSpinDelta() const;
    virtual void IgnoreEditChanged(int ignore);
    virtual int IgnoreEditChanged() const;
    virtual void IgnoreKillFocusAction(int ignore);
    virtual int IgnoreKillFocusAction() const;
    // The profile file and section of the last items; an empty section is made up
    // by InitializeEdit from the classes and the id.
    void SetLastItemsIniFile(const char* path);
    void SetLastItemsSection(const char* section);
    CString GetLastItemsSection() const;
    int IsPassword() const { return m_password; }

    // --- commands (each acts only while the edit has the focus; Beep when its
    // Can... test fails)
    virtual int CanInsert() const;
    virtual int CanUndo() const;
    virtual int CanRedo() const;
    virtual int CanCut() const;
    virtual int CanCopy() const;
    virtual int CanPaste() const;
    virtual int CanDelete() const;
    virtual int CanBackspace() const;
    virtual int CanSelectAll() const;
    // Puts last item `id` (kFirstLastItemCommand + index) in place of the content.
    virtual void Insert(unsigned int id);
    virtual void Undo();
    virtual void Redo();
    virtual void Cut();
    virtual void Copy();
    virtual void Paste();
    virtual void Delete();
    virtual void Backspace();
    virtual void SelectAll();
    virtual void RemoveAllLastItems();
    // Opens the context menu at `point` (screen coordinates).
    virtual void ContextMenu(CWnd* wnd, CPoint point);
    virtual void DispatchSpinDeltapos(int up, int delta);
    virtual void DispatchButtonClicked();
    // Takes the place of the window with `id` in `parent` (its geometry, id and
    // place in a layout; the other window is deleted) and initialises the edit.
    virtual BOOL SubclassDlgItem(unsigned int id, CWnd* parent);
    virtual BOOL SubclassWindow(HWND hWnd);
    virtual void OnEditChanged(unsigned int id);
    virtual void OnButtonClicked();
    virtual void OnSpinDeltapos(int up, int delta);
    // Empties the value, hooks the control, reads its style, prepares colours,
    // limits, undo and last items. Runs once (again only after a re-attach).
    virtual void InitializeEdit();
    // The state of `text` by length: 0 valid, 1 empty and not allowed, 2 too short
    // or too long (with the reason in `reason` when not null).
    virtual eState InternalValidate(const char* text, CString* reason);
    // Last item by command id; "" when there is none.
    virtual CString GetLastItem(unsigned int id);
    virtual std::vector<CString> GetAllLastItems();
    virtual void AddCurrentToLastItems();
    virtual void AddPreviousToUndoRedo();
    // A new item (of the undo item class) with the same content; caller owns it.
    virtual CZelEditUndoRedoItem* CopyUndoRedoItem(CZelEditUndoRedoItem* item);
    virtual void FillUndoRedoItemWithCurrent(CZelEditUndoRedoItem* item);
    virtual void PrepareColors();
    virtual void Convert(CString& text) const;
    virtual void Convert(char& c) const;
    virtual BOOL CharAllowed(char c) const;
    virtual void RemoveNotAllowedChars(CString& text) const;
    virtual void InternalSetWindowTextNoTrimNoUndoRedo(const char* text);
    // Converts, filters and (with `trim`) trims `text`; TRUE when it changed.
    virtual BOOL TrimString(CString& text, int trim) const;
    virtual BOOL GetClipboardText(CString& text) const;
    virtual BOOL SetClipboardText(const char* text) const;
    virtual BOOL ControlOrChildHasFocus() const;
    virtual void ConvertDisplayToInputPos(int& pos);
    virtual void ShowValue();
    virtual void ShowDisplayValue();
    virtual void ShowInputValue();
    virtual void LimitTextValue();
    virtual void LimitTextDisplayValue();
    virtual void LimitTextInputValue();
    virtual void Beep();
    virtual BOOL CreateEditButton(const char* text);
    virtual void DeleteEditButton();
    virtual BOOL CreateSpinButton();
    virtual void DeleteSpinButton();
    virtual void SpinButtonSetBuddy();

    CZelEditButton* GetEditButton() const { return m_button; }
    QWidget* GetSpinButton() const;
    const CZelUndoRedo& GetUndoRedo() const { return m_undoRedo; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Showing and hiding change validity: both run inside an empty-change guard.
    void setVisible(bool visible) override;

    // The edit is shown or hidden: status 0 by its own show or hide (the
    // container hears of the changed validity), SW_PARENTCLOSING or
    // SW_PARENTOPENING when its window is hidden or shown with it, which changes
    // nothing (a hidden parent doesn't make a control valid). The button and spin
    // are the edit's children and always follow it.
    virtual void OnShowWindow(BOOL show, UINT status);
    // The navigation keys the edit keeps for itself. An inline edit or one inside
    // another edit keeps Tab (DLGC_WANTTAB), or all keys (DLGC_WANTALLKEYS: Tab,
    // Enter and Escape) when its parent is neither a dialog, a form view nor an
    // edit; other edits keep none (0).
    // Kept keys reach the edit's hooks and handlers and go no further: Tab
    // doesn't move the focus and Enter and Escape don't reach a dialog around.
    virtual UINT OnGetDlgCode();

protected:
    virtual void OnSetFocus(QFocusEvent* event);
    virtual void OnKillFocus(QFocusEvent* event);
    // A typed character (already past Qt's key handling); code points below 32 are
    // dropped.
    virtual void OnChar(const QString& ch);

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    HINSTANCE m_menuInstance;
    unsigned int m_menuId;
    COLORREF m_colours[6] = {0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu};
    eConversion m_conversion = eConversionNone;
    eAllowedChars m_allowedChars = eAllowedCharsAll;
    CString m_customChars;
    CString m_notAllowedChars;
    unsigned int m_minChars = 0;
    unsigned int m_maxChars = 0xFFFFFFFFu;
    // What typing may fill, in characters; negative: no limit. Set by the LimitText
    // operations and binding only the user, never the program's own text.
    long long m_typingLimit = -1;
    int m_trimLeft;
    int m_trimRight;
    int m_wrapRange = 1;
    CString m_displayFormat;
    int m_caretPos = -1;
    int m_caretPending = 0;
    CRuntimeClass* m_undoItemClass;
    CZelEditUndoRedoItem* m_currentUndoItem = nullptr;
    CZelUndoRedo m_undoRedo;
    int m_noUndo = 0;
    CString m_lastItemsFile;
    CString m_lastItemsSection;
    CZelLastDocuments* m_lastItems = nullptr;
    int m_parentIsDialog = 0;
    int m_parentIsFormView = 0;
    int m_parentIsEdit = 0;
    bool m_inSetVisible = false;
    CString m_currentValue;
    int m_isEmpty = 1;
    int m_selectOnFocus = 1;
    int m_password = 0;
    CZelEditButton* m_button = nullptr;
    CZelEditSpin* m_spin = nullptr;
    int m_spinDelta = 1;
    int m_showInProgress = 0;
    int m_ignoreEditChanged = 0;
    int m_ignoreKillFocusAction = 0;
    int m_initialized = 0;

private:
    void StepUndoRedo(bool redo);
    CWnd* GetSafeWnd() const override { return const_cast<CZelEdit*>(this); }
    bool charAllowed(const QString& ch) const;
    void placeCompanions();
    void notifyParentOfChange();
    int selectionLength() const;
    bool m_placing = false;
};
