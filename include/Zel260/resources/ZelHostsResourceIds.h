// String ids of dialogs and views (range 1600-1699).
#pragma once

// The dialog shown while a view prints.
#define IDS_ZEL_PRINTING_TITLE 1600
#define IDS_ZEL_PRINTING_PAGE 1601
