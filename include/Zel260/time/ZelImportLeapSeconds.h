// Brings the table of leap seconds up to date from a leap-second list in the
// IERS/NTP "leap-seconds.list" format (Debian: /usr/share/zoneinfo/leap-seconds.list).
#pragma once

// Each data line is "NTP-seconds TAI-UTC [# comment]", NTP seconds counting from
// 1900-01-01; lines starting with '#' are comments. Every entry from 1980-01-01 on
// becomes the GPS-UTC count (TAI-UTC - 19) and goes through
// CZelTimeHelper::AddLeapSeconds, so the table grows and is written to the profile.
// Returns the number of rows that the table gained. A file that can't be read, holds
// no entry, or has a line that is not of that form (a time not at midnight, counts
// that fall, a count outside 0..50 after 1980) gives 0 and changes nothing.
int ZelImportLeapSeconds(const char* path);
