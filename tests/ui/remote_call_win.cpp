#include "tests/ui/remote_call_win.h"

#include <tlhelp32.h>

#include <algorithm>
#include <array>
#include <span>
#include <stdexcept>
#include <string>

namespace app::testing {
namespace {

// The argument of the thread in the other process.
struct CallBlock {
  uint64_t function = 0;
  std::array<uint64_t, 5> arguments = {};
  uint64_t result = 0;
};

// The thread's code: calls the function with the arguments and stores its result. The test and the
// program must both be 32-bit or both 64-bit.
constexpr unsigned char callCode64[] = {
    // The address of the CallBlock is in rcx.
    0x53,                          // push rbx
    0x48, 0x83, 0xEC, 0x30,        // sub  rsp, 48
    0x48, 0x89, 0xCB,              // mov  rbx, rcx
    0x48, 0x8B, 0x43, 0x28,        // mov  rax, [rbx + 40]
    0x48, 0x89, 0x44, 0x24, 0x20,  // mov  [rsp + 32], rax
    0x4C, 0x8B, 0x4B, 0x20,        // mov  r9, [rbx + 32]
    0x4C, 0x8B, 0x43, 0x18,        // mov  r8, [rbx + 24]
    0x48, 0x8B, 0x53, 0x10,        // mov  rdx, [rbx + 16]
    0x48, 0x8B, 0x4B, 0x08,        // mov  rcx, [rbx + 8]
    0xFF, 0x13,                    // call [rbx]
    0x48, 0x89, 0x43, 0x30,        // mov  [rbx + 48], rax
    0x31, 0xC0,                    // xor  eax, eax
    0x48, 0x83, 0xC4, 0x30,        // add  rsp, 48
    0x5B,                          // pop  rbx
    0xC3,                          // ret
};
// A function with fewer arguments removes only those from the stack, so esp is restored from ebp.
constexpr unsigned char callCode32[] = {
    // The address of the CallBlock is on the stack.
    0x55,                                      // push ebp
    0x89, 0xE5,                                // mov  ebp, esp
    0x53,                                      // push ebx
    0x8B, 0x5D, 0x08,                          // mov  ebx, [ebp + 8]
    0xFF, 0x73, 0x28,                          // push [ebx + 40]
    0xFF, 0x73, 0x20,                          // push [ebx + 32]
    0xFF, 0x73, 0x18,                          // push [ebx + 24]
    0xFF, 0x73, 0x10,                          // push [ebx + 16]
    0xFF, 0x73, 0x08,                          // push [ebx + 8]
    0xFF, 0x13,                                // call [ebx]
    0x89, 0x43, 0x30,                          // mov  [ebx + 48], eax
    0xC7, 0x43, 0x34, 0x00, 0x00, 0x00, 0x00,  // mov  dword [ebx + 52], 0
    0x8B, 0x5D, 0xFC,                          // mov  ebx, [ebp - 4]
    0x89, 0xEC,                                // mov  esp, ebp
    0x31, 0xC0,                                // xor  eax, eax
    0x5D,                                      // pop  ebp
    0xC2, 0x04, 0x00,                          // ret  4
};

std::span<const unsigned char> CallCode() {
  if constexpr (sizeof(void*) == 8) return callCode64;
  return callCode32;
}

constexpr DWORD answerTimeout = 60'000;

// The address of the module with this name in the process; null when there is none.
uint64_t ModuleBase(DWORD process, const std::wstring& name) {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process);
  MODULEENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  uint64_t base = 0;
  for (BOOL more = Module32FirstW(snapshot, &entry); more && base == 0;
       more = Module32NextW(snapshot, &entry)) {
    if (lstrcmpiW(entry.szModule, name.c_str()) == 0) {
      base = reinterpret_cast<uint64_t>(entry.modBaseAddr);
    }
  }
  CloseHandle(snapshot);
  return base;
}

// The address of a system library's function in the other process. Windows loads a system library
// at the same address in all processes; 32-bit Wine may load it anywhere.
uint64_t AddressThere(DWORD process, uint64_t function) {
  HMODULE library = nullptr;
  wchar_t path[MAX_PATH] = {};
  if (!GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          reinterpret_cast<const wchar_t*>(function), &library) ||
      GetModuleFileNameW(library, path, MAX_PATH) == 0) {
    throw std::runtime_error("the function is in no library");
  }
  const std::wstring name = path;
  const uint64_t base = ModuleBase(process, name.substr(name.rfind(L'\\') + 1));
  if (base == 0) throw std::runtime_error("the program has not loaded the function's library");
  return base + (function - reinterpret_cast<uint64_t>(library));
}

}  // namespace

RemoteCaller::RemoteCaller(HWND window)
    : scratch_(window, ScratchSize), block_(window, sizeof(CallBlock)) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  process_ = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
  if (process_ == nullptr) throw std::runtime_error("the program cannot be opened");
  const std::span<const unsigned char> code = CallCode();
  code_ = VirtualAllocEx(process_, nullptr, code.size(), MEM_COMMIT | MEM_RESERVE,
                         PAGE_EXECUTE_READWRITE);
  if (!WriteProcessMemory(process_, code_, code.data(), code.size(), nullptr)) {
    CloseHandle(process_);
    throw std::runtime_error("no code can be written to the program");
  }
}

RemoteCaller::~RemoteCaller() {
  VirtualFreeEx(process_, code_, 0, MEM_RELEASE);
  CloseHandle(process_);
}

uint64_t RemoteCaller::CallAddress(uint64_t function,
                                   std::initializer_list<uint64_t> arguments) const {
  uint64_t& known = addresses_[function];
  if (known == 0) known = AddressThere(GetProcessId(process_), function);
  CallBlock block{.function = known};
  std::copy(arguments.begin(), arguments.end(), block.arguments.begin());
  block_.Write(0, &block, sizeof block);
  const HANDLE thread =
      CreateRemoteThread(process_, nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(code_),
                         block_.At(0), 0, nullptr);
  if (thread == nullptr) throw std::runtime_error("no thread can be started in the program");
  const DWORD ended = WaitForSingleObject(thread, answerTimeout);
  CloseHandle(thread);
  if (ended != WAIT_OBJECT_0) throw std::runtime_error("the call in the program did not return");
  block_.Read(0, &block, sizeof block);
  return block.result;
}

}  // namespace app::testing
