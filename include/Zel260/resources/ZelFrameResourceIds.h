// String ids of the frame (range 1000-1099).
#pragma once

constexpr unsigned IDS_ZEL_BOOLEAN_YES = 1000;
constexpr unsigned IDS_ZEL_BOOLEAN_NO = 1001;
constexpr unsigned IDS_ZEL_BOOLEAN_TRUE = 1002;
constexpr unsigned IDS_ZEL_BOOLEAN_FALSE = 1003;
constexpr unsigned IDS_ZEL_BOOLEAN_ON = 1004;
constexpr unsigned IDS_ZEL_BOOLEAN_OFF = 1005;
