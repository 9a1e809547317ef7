// Memory that is about to be filled in one sweep.
#pragma once

#include <cstddef>

namespace zelplatform {

// Asks the kernel to back the whole 2 MiB pages inside [data, data + size) with huge
// pages when they are first touched. Filling tens of megabytes then takes a few
// faults instead of thousands; on a virtual machine each fault is costly. A hint
// only: where the kernel declines, nothing changes.
void AdviseLargeBuffer(void* data, std::size_t size);

} // namespace zelplatform
