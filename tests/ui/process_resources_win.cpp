#include "tests/ui/process_resources_win.h"

#include <psapi.h>
#include <winternl.h>

#include <cstddef>
#include <stdexcept>
#include <vector>

#include "tests/support/process_handles_win.h"

namespace app::testing {
namespace {

// Wine does not implement the call that counts GDI objects, but each process has a table of them
// where Windows has it.
struct GdiEntry {
  uint64_t object;
  uint32_t owner;
  uint16_t unique;
  uint8_t type;  // 0 for a free entry
  uint8_t flags;
  uint64_t userPointer;
};
constexpr size_t GdiTableLength = 65536;
constexpr size_t GdiTableOffset =
    0xF8;  // offset of the table's address in the process environment block

template <typename Value>
void Read(HANDLE process, uint64_t address, Value* values, size_t count) {
  SIZE_T read = 0;
  if (!ReadProcessMemory(process, reinterpret_cast<const void*>(address), values,
                         count * sizeof(Value), &read)) {
    throw std::runtime_error("the process can't be read");
  }
}

uint32_t CountGdiObjects(HANDLE process) {
  if (const DWORD count = GetGuiResources(process, GR_GDIOBJECTS); count != 0) return count;
  PROCESS_BASIC_INFORMATION basic = {};
  NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr);
  uint64_t table = 0;
  Read(process, reinterpret_cast<uint64_t>(basic.PebBaseAddress) + GdiTableOffset, &table, 1);
  std::vector<GdiEntry> entries(GdiTableLength);
  Read(process, table, entries.data(), entries.size());
  uint32_t count = 0;
  for (const GdiEntry& entry : entries) count += entry.type != 0 ? 1 : 0;
  return count;
}

}  // namespace

ProcessResources CountResources(HANDLE process) {
  return {.handles = swr::testing::CountHandles(GetProcessId(process)),
          .gdiObjects = CountGdiObjects(process),
          .userObjects = GetGuiResources(process, GR_USEROBJECTS)};
}

ProcessMemory MeasureMemory(HANDLE process) {
  PROCESS_MEMORY_COUNTERS counters = {};
  if (!GetProcessMemoryInfo(process, &counters, sizeof counters)) {
    throw std::runtime_error("the memory of the process can't be measured");
  }
  return {.workingSet = counters.WorkingSetSize, .privateBytes = counters.PagefileUsage};
}

}  // namespace app::testing
