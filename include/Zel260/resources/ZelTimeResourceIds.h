// String ids of the time folder (1200-1299, and the platform's fixed 55296).
#pragma once

// Shown for a COleDateTime whose status is invalid.
constexpr unsigned int IDS_ZEL_TIME_INVALID_DATETIME = 55296;
