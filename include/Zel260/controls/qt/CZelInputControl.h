// The mix-in of every control that takes input: it validates itself when its
// container asks, and tells the container when its emptiness changes. A control
// class derives from its Qt widget, CWnd and this class:
//
//   class CMyEdit : public QLineEdit, public CWnd, public CZelInputControl { ... };
//
// The container (CZelInputControlContainer) speaks with the control only through the
// registered messages WM_ZEL_INPUT_CONTROL_VALIDATE (wParam a CString* for the
// reason, may be 0; answer an eState) and WM_ZEL_INPUT_CONTROL_VALIDATE_EMPTY
// (answer 1 when empty and not allowed), which the control's hook answers once
// HookControl has run. A window that doesn't know them answers 0: valid.
#pragma once

#include <Zel260/controls/qt/CZelSubclassWnd.h>
#include <Zel260/platform/CGeometry.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/CWnd.h>

class CZelInlineControlContainer;

class CZelInputControl {
public:
    // The result of validation.
    enum eState {
        eStateValid = 0,    // valid
        eStateEmpty = 1,    // empty, and the control may not be empty
        eStateInvalid = 2,  // invalid; the reason text, if asked for, says why
    };

    // The hook on the control's window that answers the container's questions.
    class CZelSubclassControl : public CZelSubclassWnd {
    public:
        explicit CZelSubclassControl(CZelInputControl* control) : m_control(control) {}
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
        CZelInputControl* m_control;
    };

    // Keeps GetChangedByUser across a change that the program makes.
    class CZelKeepChangedByUserStatus {
    public:
        explicit CZelKeepChangedByUserStatus(CZelInputControl* control);
        ~CZelKeepChangedByUserStatus();
        CZelKeepChangedByUserStatus(const CZelKeepChangedByUserStatus&) = delete;
        CZelKeepChangedByUserStatus& operator=(const CZelKeepChangedByUserStatus&) = delete;

    private:
        CZelInputControl* m_control;
        int m_changedByUser;
    };

    // Brackets any change of a control's content. Guards nest: a process-wide count
    // per window makes only the outermost one compare ValidateEmpty() with its value
    // at entry and call OnEmptyChanged() when it differs.
    class CZelNotifyEmptyChanged {
    public:
        explicit CZelNotifyEmptyChanged(CZelInputControl* control);
        ~CZelNotifyEmptyChanged();
        CZelNotifyEmptyChanged(const CZelNotifyEmptyChanged&) = delete;
        CZelNotifyEmptyChanged& operator=(const CZelNotifyEmptyChanged&) = delete;

        // The number of open guards on `hWnd` (0 when none).
        static int GetNestingCount(HWND hWnd);

    private:
        CZelInputControl* m_control;
        HWND m_hWnd;
        int m_emptyAtEntry;
    };

    CZelInputControl();
    virtual ~CZelInputControl();
    CZelInputControl(const CZelInputControl&) = delete;
    CZelInputControl& operator=(const CZelInputControl&) = delete;

    // 0 and no change while hooked; otherwise clears empty allowed and read-only
    // mode and returns 1.
    virtual int ResetAttributes();
    // The rectangles of an inline container and its control over a list cell
    // (`container` holds the cell on entry). The default leaves both at the cell.
    virtual void SetupInlineRect(CRect& container, CRect& control, HFONT font, unsigned long flags);
    // Creates the control inside an inline container. FALSE at this level.
    virtual BOOL CreateInline(unsigned long style, const CRect& rect, CWnd* parent, unsigned int id, HFONT font);
    // Hooks the control's window and takes its parent as the container. FALSE without
    // a window or when already hooked.
    virtual BOOL HookControl();
    virtual BOOL UnhookControl();

    // The content. At this level the strings are empty, SetString returns 0.
    virtual CString GetRawString() const;
    virtual CString GetString() const;
    // GetString without white space at either end.
    virtual CString GetStringTrimmed() const;
    virtual int SetString(const char* text); // null counts as ""
    virtual int SetString(const CString& text);
    // Typed content: getters return 0 and setters return 0 and do nothing at this
    // level; a control overrides those it understands (setters return nonzero then).
    virtual short GetShort() const;
    virtual int SetShort(short value);
    virtual unsigned short GetUshort() const;
    virtual int SetUshort(unsigned short value);
    virtual int GetInt() const;
    virtual int SetInt(int value);
    virtual unsigned int GetUint() const;
    virtual int SetUint(unsigned int value);
    virtual long GetLong() const;
    virtual int SetLong(long value);
    virtual unsigned long GetUlong() const;
    virtual int SetUlong(unsigned long value);
    virtual float GetFloat() const;
    virtual int SetFloat(float value);
    virtual double GetDouble() const;
    virtual int SetDouble(double value);

    virtual int IsEmpty() const = 0;
    virtual int GetEmptyAllowed() const;
    // Both setters: 1; a change happens inside a CZelNotifyEmptyChanged guard.
    virtual int SetEmptyAllowed(int allowed);
    virtual int GetReadOnlyMode() const;
    virtual int SetReadOnlyMode(int readOnly);
    virtual int GetChangedByUser() const;
    virtual void SetChangedByUser(int changed);
    // The window that holds the control; null when none is known.
    virtual CWnd* GetContainer() const;
    virtual void SetContainer(CWnd* container);
    // The width, in pixels, that companions beside the control need (0 here).
    virtual int GetMinWidth() const;
    // The control's window rectangle in screen coordinates; FALSE without a window.
    virtual BOOL GetWindowBoundingRect(RECT* rect) const;

    // The control's own check of its content; `text` (may be null) gets the reason.
    virtual eState OnValidate(CString* text) = 0;
    // 1 when empty and empty isn't allowed.
    virtual int OnValidateEmpty();
    // 1 when validation doesn't apply: read-only mode, no window, or the window
    // itself hidden (a hidden parent doesn't count; a disabled control is validated).
    virtual int ValidateIgnore();
    // Gives the control's window the focus, if it has one.
    virtual void SetFocusInputControl();
    // Tell the container: emptiness changed, a child window was added, a window is
    // to be hooked or unhooked. Nothing without a container.
    virtual void OnEmptyChanged();
    virtual void OnDlgCtrlChildAdded(HWND child);
    virtual void OnHookDlgCtrl(HWND hWnd);
    virtual void OnUnhookDlgCtrl(HWND hWnd);
    // Measures `text` in `font` (null: the application font): `height1` and
    // `height2` become its height plus 4, `width` its width, in pixels.
    virtual void GetInlineDimensions(long& height1, long& width, long& height2, HFONT font, const char* text);
    // How far an inline control moves up to centre `x` in `y`: 0 when x >= y, else
    // (y - x + 1) / 2.
    virtual long GetInlineMoveUp(long x, long y);
    // Tells an inline container that a dialog box is about to open over it.
    virtual void SetInlineControlContainerDialogBoxPending(int pending);

    // 0 when ValidateIgnore(), else OnValidate(text).
    eState Validate(CString* text = nullptr);
    // 0 when ValidateIgnore(), else OnValidateEmpty().
    int ValidateEmpty();
    int IsInline() const { return m_inline; }
    BOOL IsControlHooked() const { return m_subclass.IsHooked(); }

    // Assignment and conversion forward to the typed setters and getters.
    CZelInputControl& operator=(short v) { SetShort(v); return *this; }
    CZelInputControl& operator=(unsigned short v) { SetUshort(v); return *this; }
    CZelInputControl& operator=(int v) { SetInt(v); return *this; }
    CZelInputControl& operator=(unsigned int v) { SetUint(v); return *this; }
    CZelInputControl& operator=(long v) { SetLong(v); return *this; }
    CZelInputControl& operator=(unsigned long v) { SetUlong(v); return *this; }
    CZelInputControl& operator=(float v) { SetFloat(v); return *this; }
    CZelInputControl& operator=(double v) { SetDouble(v); return *this; }
    CZelInputControl& operator=(const char* v) { SetString(v); return *this; }
    CZelInputControl& operator=(const CString& v) { SetString(v); return *this; }
    explicit operator short() const { return GetShort(); }
    explicit operator unsigned short() const { return GetUshort(); }
    explicit operator int() const { return GetInt(); }
    explicit operator unsigned int() const { return GetUint(); }
    explicit operator long() const { return GetLong(); }
    explicit operator unsigned long() const { return GetUlong(); }
    explicit operator float() const { return GetFloat(); }
    explicit operator double() const { return GetDouble(); }
    explicit operator CString() const { return GetString(); }

protected:
    int m_inline = 0;
    int m_emptyAllowed = 0;
    int m_readOnlyMode = 0;
    int m_changedByUser = 0;
    HWND m_container = nullptr;
    CZelSubclassControl m_subclass{this};
    // An inline container the control lives in (set by CreateInline of derived classes).
    CZelInlineControlContainer* m_inlineContainer = nullptr;

private:
    // The control's own window.
    virtual CWnd* GetSafeWnd() const = 0;
    HWND safeHwnd() const;
    void sendToContainer(UINT message, WPARAM wParam, LPARAM lParam);
};
