#include "tests/ui/replaced_import_win.h"

#include <array>
#include <cstring>
#include <stdexcept>
#include <string>

namespace app::testing {

template <typename Value>
Value ReplacedImport::ReadAt(uintptr_t address) const {
  Value value = {};
  if (!ReadProcessMemory(process_, reinterpret_cast<void*>(address), &value, sizeof value,
                         nullptr)) {
    throw std::runtime_error("the program cannot be read");
  }
  return value;
}

ReplacedImport::ReplacedImport(HWND window, std::string_view function, FARPROC replacement) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  process_ = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
  if (process_ == nullptr) throw std::runtime_error("the program cannot be opened");
  const uintptr_t image = static_cast<uintptr_t>(RemoteCaller(window).Call(GetModuleHandleW, {0}));
  entry_ = FindEntry(image, function);
  if (entry_ == 0) {
    CloseHandle(process_);
    throw std::runtime_error("the program imports no " + std::string(function));
  }
  original_ = ReadAt<uintptr_t>(entry_);
  Write(reinterpret_cast<uintptr_t>(replacement));
}

ReplacedImport::~ReplacedImport() {
  Write(original_);
  CloseHandle(process_);
}

void ReplacedImport::Write(uintptr_t function) const {
  void* place = reinterpret_cast<void*>(entry_);
  DWORD protection = 0;
  VirtualProtectEx(process_, place, sizeof function, PAGE_READWRITE, &protection);
  WriteProcessMemory(process_, place, &function, sizeof function, nullptr);
  VirtualProtectEx(process_, place, sizeof function, protection, &protection);
}

uintptr_t ReplacedImport::FindEntry(uintptr_t image, std::string_view function) const {
  const auto dos = ReadAt<IMAGE_DOS_HEADER>(image);
  const auto headers = ReadAt<IMAGE_NT_HEADERS>(image + static_cast<uintptr_t>(dos.e_lfanew));
  uintptr_t library =
      image + headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (;; library += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
    const auto imports = ReadAt<IMAGE_IMPORT_DESCRIPTOR>(library);
    if (imports.Name == 0) return 0;
    for (uintptr_t offset = 0;; offset += sizeof(uintptr_t)) {
      const auto name = ReadAt<uintptr_t>(image + imports.OriginalFirstThunk + offset);
      if (name == 0) break;
      if (IMAGE_SNAP_BY_ORDINAL(name)) continue;
      // After the hint, which is the function's likely index in its library.
      const auto text = ReadAt<std::array<char, 64>>(image + name + sizeof(WORD));
      if (std::string_view(text.data(), strnlen(text.data(), text.size())) == function) {
        return image + imports.FirstThunk + offset;
      }
    }
  }
}

// A window handle is neither a thread id nor a handle that can be closed, so these calls fail.
FARPROC PostsNothing() { return GetProcAddress(GetModuleHandleW(L"user32"), "PostThreadMessageW"); }

FARPROC ReturnsANegativeNumber() { return GetProcAddress(GetModuleHandleW(L"ntdll"), "NtClose"); }

}  // namespace app::testing
