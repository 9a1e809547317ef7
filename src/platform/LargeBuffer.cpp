#include "platform/LargeBuffer.h"

#include <cstdint>

#include <sys/mman.h>

namespace zelplatform {

void AdviseLargeBuffer(void* data, std::size_t size)
{
    constexpr std::uintptr_t kHuge = std::uintptr_t(2) << 20;
    const auto begin = reinterpret_cast<std::uintptr_t>(data);
    const std::uintptr_t first = (begin + kHuge - 1) & ~(kHuge - 1);
    const std::uintptr_t last = (begin + size) & ~(kHuge - 1);
    if (data && size >= kHuge && last > first)
        ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

} // namespace zelplatform
