#include "swr/system/page_memory.h"

#include "swr/system/windows_api_win.h"

namespace swr {

void* AllocatePages(size_t size) noexcept {
  return VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void FreePages(void* pages, size_t /*size*/) noexcept { VirtualFree(pages, 0, MEM_RELEASE); }

}  // namespace swr
