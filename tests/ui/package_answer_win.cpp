#include "tests/ui/package_answer_win.h"

#include <stdexcept>

namespace app::testing {
namespace {

// GetCurrentPackageFullName as in a packaged process that calls it without a buffer: returns
// ERROR_INSUFFICIENT_BUFFER.
constexpr unsigned char Answer[] = {
    0xB8, 0x7A, 0x00, 0x00, 0x00,  // mov eax, 122
    0xC3,                          // ret
};

constexpr DWORD EventTimeout = 30'000;  // milliseconds

// The system's libraries have the same addresses in every process.
void ReplaceAnswer(HANDLE process) {
  void* const function = reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "GetCurrentPackageFullName"));
  DWORD before = 0;
  if (function == nullptr ||
      !VirtualProtectEx(process, function, sizeof Answer, PAGE_EXECUTE_READWRITE, &before) ||
      !WriteProcessMemory(process, function, Answer, sizeof Answer, nullptr)) {
    throw std::runtime_error("the program's code can't be changed");
  }
  VirtualProtectEx(process, function, sizeof Answer, before, &before);
  FlushInstructionCache(process, function, sizeof Answer);
}

}  // namespace

void AnswerFromPackage(HANDLE process, DWORD processId) {
  DebugSetProcessKillOnExit(FALSE);
  // The system stops the process once, after its first libraries are loaded.
  bool isLoaded = false;
  while (!isLoaded) {
    DEBUG_EVENT event = {};
    if (!WaitForDebugEvent(&event, EventTimeout)) {
      throw std::runtime_error("the program does not load its libraries");
    }
    if (event.dwDebugEventCode == CREATE_PROCESS_DEBUG_EVENT) {
      CloseHandle(event.u.CreateProcessInfo.hFile);
    } else if (event.dwDebugEventCode == LOAD_DLL_DEBUG_EVENT) {
      CloseHandle(event.u.LoadDll.hFile);
    } else if (event.dwDebugEventCode == EXIT_PROCESS_DEBUG_EVENT) {
      throw std::runtime_error("the program ends while it is loaded");
    }
    isLoaded = event.dwDebugEventCode == EXCEPTION_DEBUG_EVENT &&
               event.u.Exception.ExceptionRecord.ExceptionCode == EXCEPTION_BREAKPOINT;
    if (isLoaded) ReplaceAnswer(process);
    ContinueDebugEvent(event.dwProcessId, event.dwThreadId, DBG_CONTINUE);
  }
  DebugActiveProcessStop(processId);
}

}  // namespace app::testing
