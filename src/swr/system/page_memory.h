// Memory in whole pages, directly from the system, and returned to it as soon as it is freed. The
// heap may keep freed memory.
#pragma once

#include <cstddef>

namespace swr {

// Filled with zeros; null if there is no memory left. `size` is in bytes and not 0.
void* AllocatePages(size_t size) noexcept;
// `size` is the size that was allocated.
void FreePages(void* pages, size_t size) noexcept;

}  // namespace swr
