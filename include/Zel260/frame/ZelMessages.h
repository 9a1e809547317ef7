// The registered window messages of the library. Each number is handed out at
// static initialisation by RegisterWindowMessage from the variable's own name, so
// it differs from one process to the next: compare against the variables, never
// against literals, and don't read them in other static initialisers of the core.
// A host that registers the same name gets the same number.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <cstddef>

// General.
extern const UINT WM_ZEL_PROPERTIES;
extern const UINT WM_ZEL_DBLCLK_SLOW;
extern const UINT WM_ZEL_KEYDOWN_EE;
extern const UINT WM_ZEL_DOCUMENT_CLOSE;
extern const UINT WM_ZEL_EVENTCHANNELS_ENABLE;
extern const UINT WM_ZEL_BTNEVENT_CREATEIMAGE;
extern const UINT WM_ZEL_SHORTCUT_LCLICKED;
extern const UINT WM_ZEL_BUTTON_OWNER_DRAW_DRAWBUTTON;
extern const UINT WM_ZEL_COMBO_BOX_MULTI_LISTHSCROLL;

// Post-notifications of the frame.
extern const UINT WM_ZEL_POST_INITDIALOG;
extern const UINT WM_ZEL_POST_INITIALUPDATE;
extern const UINT WM_ZEL_POST_SETFOCUS;
extern const UINT WM_ZEL_POST_ACTIVATEVIEW;
extern const UINT WM_ZEL_POST_ACTIVATECHILDVIEW;
extern const UINT WM_ZEL_VIEW_DLGITEM_EXCHANGED;
extern const UINT WM_ZEL_SWITCHEDVIEW_MEMBER_CREATED;
extern const UINT WM_ZEL_SPLITTERVIEW_POST_SPLITTERLBUTTONUP;

// Input controls.
extern const UINT WM_ZEL_EDIT_DELETE;
extern const UINT WM_ZEL_EDIT_SELECT_ALL;
extern const UINT WM_ZEL_INPUT_CONTROL_VALIDATE;
extern const UINT WM_ZEL_INPUT_CONTROL_VALIDATE_EMPTY;
extern const UINT WM_ZEL_INPUT_CONTROL_EMPTY_CHANGED;
extern const UINT WM_ZEL_INPUT_CONTROL_CHILD_ADDED;
extern const UINT WM_ZEL_INPUT_CONTROL_SAVE_VALUE_INLINE;
extern const UINT WM_ZEL_INPUT_CONTROL_CANCEL_INLINE;
extern const UINT WM_ZEL_INPUT_CONTROL_HOOK_DLG_CTRL;
extern const UINT WM_ZEL_INPUT_CONTROL_UNHOOK_DLG_CTRL;

// Unit and format changes.
extern const UINT WM_ZEL_UNIT_CHANGED_DISTANCE;
extern const UINT WM_ZEL_UNIT_CHANGED_ANGLE;
extern const UINT WM_ZEL_FORMAT_CHANGED_TIME;

// File search thread.
extern const UINT WM_ZEL_FILESEARCHTHREAD_BEGIN;
extern const UINT WM_ZEL_FILESEARCHTHREAD_TERMINATE;
extern const UINT WM_ZEL_FILESEARCHTHREAD_ABORT;
extern const UINT WM_ZEL_FILESEARCHTHREAD_SEARCHDIRECTORY;
extern const UINT WM_ZEL_FILESEARCHTHREAD_FILESEARCHINDIRECTORY;

// Tab control.
extern const UINT WM_ZEL_TABCTRL_SEL;
extern const UINT WM_ZEL_TABCTRL_PRE_SEL;
extern const UINT WM_ZEL_TABCTRL_PRE_REMOVE;

// Custom file dialog and drive view.
extern const UINT WM_ZEL_DLGCUSTOMFILE_FILENAME_CHANGED;
extern const UINT WM_ZEL_DRIVE_VIEW_CONTENT_CHANGED;

// List view.
extern const UINT WM_ZEL_LISTVIEW_NO_SUBITEM_IMAGES;

// Report view commands.
extern const UINT WM_ZEL_REPORTVIEW_COLUMNS_DLG;
extern const UINT WM_ZEL_REPORTVIEW_VIEW_ALL_COLS;
extern const UINT WM_ZEL_REPORTVIEW_HIDE_ALL_COLS;
extern const UINT WM_ZEL_REPORTVIEW_AUTO_ARRANGE;
extern const UINT WM_ZEL_REPORTVIEW_SORT_ASCENDING;
extern const UINT WM_ZEL_REPORTVIEW_SORT_DESCENDING;
extern const UINT WM_ZEL_REPORTVIEW_SORT_UNSORTED;
extern const UINT WM_ZEL_REPORTVIEW_SORT_MULTIPLE;
extern const UINT WM_ZEL_REPORTVIEW_MODIFY;
extern const UINT WM_ZEL_REPORTVIEW_SAVE_AS;
extern const UINT WM_ZEL_REPORTVIEW_DELETE_SELECTED;
extern const UINT WM_ZEL_REPORTVIEW_FIND;
extern const UINT WM_ZEL_REPORTVIEW_FIND_NEXT;
extern const UINT WM_ZEL_REPORTVIEW_FIND_PREV;
extern const UINT WM_ZEL_REPORTVIEW_SELECT_ALL;
extern const UINT WM_ZEL_REPORTVIEW_INVERT_SELECTION;
extern const UINT WM_ZEL_REPORTVIEW_SELECT_CHECKED_ITEMS;
extern const UINT WM_ZEL_REPORTVIEW_CHECK_ALL;
extern const UINT WM_ZEL_REPORTVIEW_INVERT_CHECKED;
extern const UINT WM_ZEL_REPORTVIEW_POST_HDN_ENDDRAG;

// Report view items.
extern const UINT WM_ZEL_REPORTVIEW_ITEM_DISPLAY_BEGIN;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_DISPLAY_END;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_CLEANUP;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_REFRESH;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_HIDE;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_VIEW;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_DELETE;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_APPEND;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_SELECT;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_DESELECT;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_CHECK;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_UNCHECK;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_DISABLE;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_ENABLE;
extern const UINT WM_ZEL_REPORTVIEW_ITEM_SORT_ORDER;

// Header list box.
extern const UINT WM_ZEL_HDR_LISTBOX_DRAW;
extern const UINT WM_ZEL_HDR_LISTBOX_ITEM_SELECTED;
extern const UINT WM_ZEL_HDR_LISTBOX_CANCELED;
extern const UINT WM_ZEL_HDR_LISTBOX_INITIALIZE;

// Tree view.
extern const UINT WM_ZEL_TREEVIEW_POST_ITEM_CHECKED;
extern const UINT WM_ZEL_TREEVIEW_ITEM_DELETE;
extern const UINT WM_ZEL_TREEVIEW_ITEM_SELECT;
extern const UINT WM_ZEL_TREEVIEW_ITEM_CHECK_BEGIN;
extern const UINT WM_ZEL_TREEVIEW_ITEM_CHECK;
extern const UINT WM_ZEL_TREEVIEW_ITEM_UNCHECK;
extern const UINT WM_ZEL_TREEVIEW_ITEM_CHECK_END;
extern const UINT WM_ZEL_TREEVIEW_ITEM_EXPAND;
extern const UINT WM_ZEL_TREEVIEW_ITEM_COLLAPSE;

// Folder content and folder tree.
extern const UINT WM_ZEL_FOLDER_CONTENT_CHANGED;
extern const UINT WM_ZEL_FOLDER_CONTENT_SELECTIONCHANGED;
extern const UINT WM_ZEL_FOLDER_CONTENT_SHOWAS_LARGEICONS;
extern const UINT WM_ZEL_FOLDER_CONTENT_SHOWAS_SMALLICONS;
extern const UINT WM_ZEL_FOLDER_CONTENT_SHOWAS_LIST;
extern const UINT WM_ZEL_FOLDER_CONTENT_SHOWAS_DETAILS;
extern const UINT WM_ZEL_FOLDER_CONTENT_SELECT;
extern const UINT WM_ZEL_FOLDER_CONTENT_REFRESH;
extern const UINT WM_ZEL_FOLDER_CONTENT_ENTRY_SELECTED;
extern const UINT WM_ZEL_TREECTRL_FOLDER_DIRCHANGED;
extern const UINT WM_ZEL_TREECTRL_FOLDER_SELECTIONCHANGED;
extern const UINT WM_ZEL_TREECTRL_LCLICKED_ON_SELECTED;

// The whole vocabulary, for diagnostics and for hosts that log message names.
struct ZelRegisteredMessage {
    const char* name;
    const UINT* value;
};
// The 101 entries, in the order above; `count` receives their number.
const ZelRegisteredMessage* ZelGetRegisteredMessages(std::size_t& count);
// The name of a registered message of the library; null for any other number.
const char* ZelRegisteredMessageName(UINT message);
