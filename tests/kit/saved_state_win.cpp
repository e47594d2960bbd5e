#include "tests/kit/saved_state_win.h"

#include <shlobj.h>

#include <exception>

#include "swr/system/unique_handle.h"
#include "tests/kit/file_bytes_win.h"

namespace kit {
namespace {

struct HandleTraits {
  using Value = HANDLE;
  static constexpr HANDLE Invalid = nullptr;
  static void Close(HANDLE handle) noexcept { CloseHandle(handle); }
};
using Handle = swr::UniqueHandle<HandleTraits>;

// Held while a process restores the state.
class RestoreLock {
 public:
  RestoreLock() : mutex_(CreateMutexW(nullptr, FALSE, L"Local\\Sumwright test kit, restoring")) {
    WaitForSingleObject(mutex_.Get(), INFINITE);
  }
  ~RestoreLock() { ReleaseMutex(mutex_.Get()); }
  RestoreLock(const RestoreLock&) = delete;
  RestoreLock& operator=(const RestoreLock&) = delete;

 private:
  Handle mutex_;
};

std::wstring FolderOf(const std::wstring& path) { return path.substr(0, path.rfind(L'\\')); }

std::wstring OwnPath() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

}  // namespace

std::wstring SavedStatePath() {
  wchar_t* found = nullptr;
  if (FAILED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &found))) return {};
  const std::wstring path = std::wstring(found) + L"\\Sumwright test kit\\saved state";
  CoTaskMemFree(found);
  return path;
}

bool HasSavedState() { return Exists(SavedStatePath()); }

bool SaveState(const UserState& state) {
  const std::wstring path = SavedStatePath();
  if (path.empty()) return false;
  CreateDirectoryW(FolderOf(path).c_str(), nullptr);
  return WriteBytes(path, RecordOf(state));
}

std::vector<std::string> RestoreSavedState() {
  const RestoreLock lock;
  const std::wstring path = SavedStatePath();
  if (!Exists(path)) return {};
  std::vector<std::string> failures;
  try {
    const std::optional<std::string> record = ReadBytes(path);
    if (!record) return {"The record of your settings can't be read."};
    failures = RestoreUserState(ReadUserState(*record));
  } catch (const std::exception& failure) {
    failures.push_back("The record of your settings can't be used: " + std::string(failure.what()));
  }
  if (failures.empty()) {
    DeleteFileW(path.c_str());
    RemoveDirectoryW(FolderOf(path).c_str());
  } else {
    MoveFileExW(path.c_str(), (path + L" (failed)").c_str(), MOVEFILE_REPLACE_EXISTING);
  }
  return failures;
}

bool StartGuard() {
  std::wstring command = L"\"" + OwnPath() + L"\" /guard " + std::to_wstring(GetCurrentProcessId());
  STARTUPINFOW startup = {.cb = sizeof startup};
  PROCESS_INFORMATION process = {};
  // If Explorer runs programs in a job, the guard would end with that job unless it can break away.
  for (const DWORD leave : {DWORD{CREATE_BREAKAWAY_FROM_JOB}, DWORD{0}}) {
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS | leave,
                       nullptr, nullptr, &startup, &process)) {
      CloseHandle(process.hThread);
      CloseHandle(process.hProcess);
      return true;
    }
  }
  return false;
}

void Guard(DWORD process) {
  {
    const Handle watched(OpenProcess(SYNCHRONIZE, FALSE, process));
    if (watched) WaitForSingleObject(watched.Get(), INFINITE);
  }
  if (!HasSavedState()) return;
  // The programs of the run end shortly after it.
  Sleep(1000);
  RestoreSavedState();
}

}  // namespace kit
