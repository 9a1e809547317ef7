// String ids of the application services (range 4200-4999).
#pragma once

// Recent documents: the disabled menu text while the list is empty, and the default
// prefix of the status-line prompt of a document's menu item.
#define IDS_ZEL_LASTDOC_EMPTY 4200
#define IDS_ZEL_LASTDOC_PROMPT_PREFIX 4201
