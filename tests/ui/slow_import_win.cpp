#include "tests/ui/slow_import_win.h"

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

namespace app::testing {
namespace {

// Saves the arguments in registers, calls Sleep, then jumps to the function. System libraries have
// the same addresses in all programs.
std::vector<uint8_t> CodeOf(uint32_t milliseconds, FARPROC function) {
  std::vector<uint8_t> code = {
      0x48, 0x83, 0xEC, 0x48,        // sub rsp, 72
      0x48, 0x89, 0x4C, 0x24, 0x20,  // mov [rsp + 32], rcx
      0x48, 0x89, 0x54, 0x24, 0x28,  // mov [rsp + 40], rdx
      0x4C, 0x89, 0x44, 0x24, 0x30,  // mov [rsp + 48], r8
      0x4C, 0x89, 0x4C, 0x24, 0x38,  // mov [rsp + 56], r9
      0xB9,                          // mov ecx, milliseconds
  };
  const auto add = [&](const auto& value) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(&value);
    code.insert(code.end(), bytes, bytes + sizeof value);
  };
  const auto addBytes = [&](std::initializer_list<uint8_t> bytes) {
    code.insert(code.end(), bytes);
  };
  add(milliseconds);
  addBytes({0x48, 0xB8});  // mov rax, Sleep
  add(reinterpret_cast<uint64_t>(GetProcAddress(GetModuleHandleW(L"kernel32"), "Sleep")));
  addBytes({
      0xFF, 0xD0,                    // call rax
      0x48, 0x8B, 0x4C, 0x24, 0x20,  // mov rcx, [rsp + 32]
      0x48, 0x8B, 0x54, 0x24, 0x28,  // mov rdx, [rsp + 40]
      0x4C, 0x8B, 0x44, 0x24, 0x30,  // mov r8, [rsp + 48]
      0x4C, 0x8B, 0x4C, 0x24, 0x38,  // mov r9, [rsp + 56]
      0x48, 0x83, 0xC4, 0x48,        // add rsp, 72
      0x48, 0xB8,                    // mov rax, function
  });
  add(reinterpret_cast<uint64_t>(function));
  addBytes({0xFF, 0xE0});  // jmp rax
  return code;
}

}  // namespace

SlowImport::SlowImport(HWND window, std::string_view function, std::chrono::milliseconds delay) {
  static_assert(sizeof(void*) == 8);
  const FARPROC original =
      GetProcAddress(GetModuleHandleW(L"kernel32"), std::string(function).c_str());
  const std::vector<uint8_t> code = CodeOf(static_cast<uint32_t>(delay.count()), original);
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  const HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
  void* place = process == nullptr
                    ? nullptr
                    : VirtualAllocEx(process, nullptr, code.size(), MEM_COMMIT | MEM_RESERVE,
                                     PAGE_EXECUTE_READWRITE);
  const bool isWritten = place != nullptr && original != nullptr &&
                         WriteProcessMemory(process, place, code.data(), code.size(), nullptr);
  if (process != nullptr) CloseHandle(process);
  if (!isWritten) throw std::runtime_error("a call of the program can't be made slow");
  replacement_ = reinterpret_cast<FARPROC>(reinterpret_cast<uintptr_t>(place));
}

}  // namespace app::testing
