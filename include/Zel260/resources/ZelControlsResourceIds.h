// String ids of the input controls (range 1300-1599).
#pragma once

// Validation reasons.
#define IDS_ZEL_FIELD_MUST_NOT_BE_EMPTY 1300
#define IDS_ZEL_EDIT_TOO_FEW_CHARS 1301
#define IDS_ZEL_EDIT_TOO_MANY_CHARS 1302

// The edit's context menu.
#define IDS_ZEL_EDIT_MENU_UNDO 1310
#define IDS_ZEL_EDIT_MENU_REDO 1311
#define IDS_ZEL_EDIT_MENU_CUT 1312
#define IDS_ZEL_EDIT_MENU_COPY 1313
#define IDS_ZEL_EDIT_MENU_PASTE 1314
#define IDS_ZEL_EDIT_MENU_DELETE 1315
#define IDS_ZEL_EDIT_MENU_SELECTALL 1316
#define IDS_ZEL_EDIT_MENU_INSERT 1317

// Menu resource of the edit's context menu.
#define IDR_ZEL_EDIT_CONTEXT_MENU 26269
