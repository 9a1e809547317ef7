// The process-wide table of leap seconds, MJD of the first day -> count in days.
#pragma once

#include <map>

namespace zeltime {

std::map<double, double>& LeapSecondTable();
// Forgets the table so that the next use loads it again, as a new process would.
void ResetLeapSecondTable();

} // namespace zeltime
