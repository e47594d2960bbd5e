// Memory in whole pages, straight from the system. Unlike the heap's, it is the system's again as
// soon as it is freed.
#pragma once

#include <cstddef>

namespace swr {

// Zeros, or null when there is no memory left. `size` in bytes, not 0.
void* AllocatePages(size_t size) noexcept;
// `size` is the one that was allocated.
void FreePages(void* pages, size_t size) noexcept;

}  // namespace swr
