#include "tests/support/process_handles_win.h"

#include <tlhelp32.h>
#include <winternl.h>

#include <cstddef>
#include <stdexcept>
#include <vector>

#include "swr/system/handles_win.h"

namespace swr::testing {
namespace {

// Wine does not implement the call that counts handles, but it does list the handles of all
// processes, as Windows does.
struct HandleEntry {
  ULONG process;
  BYTE type;
  BYTE flags;
  USHORT handle;
  void* object;
  ULONG access;
};
struct HandleList {
  ULONG count;
  HandleEntry entries[1];
};

}  // namespace

uint32_t CountHandles(DWORD process) {
  constexpr auto handleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
  std::vector<std::byte> memory(size_t{1} << 16);
  ULONG needed = 0;
  while (NtQuerySystemInformation(handleInformation, memory.data(),
                                  static_cast<ULONG>(memory.size()), &needed) != 0) {
    if (memory.size() > size_t{1} << 26) throw std::runtime_error("no list of handles");
    memory.resize(memory.size() * 2);
  }
  const auto& list = *reinterpret_cast<const HandleList*>(memory.data());
  uint32_t count = 0;
  for (ULONG i = 0; i < list.count; ++i) count += list.entries[i].process == process ? 1 : 0;
  return count;
}

uint32_t CountThreads(DWORD process) {
  const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 thread = {.dwSize = sizeof thread};
  if (!snapshot || !Thread32First(snapshot.Get(), &thread)) {
    throw std::runtime_error("no list of threads");
  }
  uint32_t count = 0;
  do {
    count += thread.th32OwnerProcessID == process ? 1 : 0;
  } while (Thread32Next(snapshot.Get(), &thread));
  return count;
}

}  // namespace swr::testing
