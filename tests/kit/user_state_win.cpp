#include "tests/kit/user_state_win.h"

#include <shlobj.h>

#include <stdexcept>

#include "tests/kit/file_bytes_win.h"
#include "tests/kit/wide_bytes_win.h"

namespace kit {
namespace {

constexpr const wchar_t* Keys[] = {
    L"Software\\Zendrik",
    L"Software\\Classes\\*\\shell\\ZendrikSumwright",
    L"Software\\Classes\\Directory\\shell\\ZendrikSumwright",
    L"Software\\Sumwright browser of the tests",
    L"Software\\SumwrightTest",
};

constexpr std::string_view RecordName = "Sumwright test kit, state 1";
constexpr std::string_view RecordEnd = "end";

std::wstring SendToLinkPath() {
  wchar_t* folder = nullptr;
  if (FAILED(SHGetKnownFolderPath(FOLDERID_SendTo, 0, nullptr, &folder))) return {};
  const std::wstring path = std::wstring(folder) + L"\\Sumwright.lnk";
  CoTaskMemFree(folder);
  return path;
}

bool RestoreSendToLink(const std::optional<std::string>& link) {
  const std::wstring path = SendToLinkPath();
  if (path.empty()) return true;
  if (link) return ReadBytes(path) == link || WriteBytes(path, *link);
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) return true;
  // One of the tests puts a folder at this path.
  return DeleteFileW(path.c_str()) || RemoveDirectoryW(path.c_str());
}

std::optional<DWORD> ForegroundLock() {
  DWORD milliseconds = 0;
  if (!SystemParametersInfoW(SPI_GETFOREGROUNDLOCKTIMEOUT, 0, &milliseconds, 0)) {
    return std::nullopt;
  }
  return milliseconds;
}

bool SetForegroundLock(DWORD milliseconds) {
  return SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0,
                               reinterpret_cast<void*>(static_cast<ULONG_PTR>(milliseconds)),
                               0) != FALSE;
}

}  // namespace

UserState CopyUserState(const std::wstring& workFolder) {
  UserState state;
  for (const wchar_t* key : Keys) state.keys.push_back(CopyKey(key));
  if (const std::wstring link = SendToLinkPath(); !link.empty()) {
    state.sendToLink = ReadBytes(link);
  }
  state.clipboard = CopyClipboard();
  state.highContrast = ReadHighContrast();
  state.screenScaling = ReadScreenScaling();
  state.foregroundLock = ForegroundLock();
  state.workFolder = workFolder;
  return state;
}

std::vector<std::string> RestoreUserState(const UserState& state) {
  std::vector<std::string> failures;
  const auto expect = [&](bool isBack, const char* failure) {
    if (!isBack) failures.push_back(failure);
  };
  for (const RegistryCopy& key : state.keys) {
    expect(RestoreKey(key), "A key of Sumwright in the registry could not be restored.");
  }
  expect(RestoreSendToLink(state.sendToLink), "The Send To entry could not be restored.");
  SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
  expect(RestoreClipboard(state.clipboard), "The clipboard could not be restored.");
  if (state.highContrast && ReadHighContrast() != state.highContrast) {
    expect(SetHighContrast(*state.highContrast), "High contrast could not be restored.");
  }
  if (state.screenScaling && ReadScreenScaling() != state.screenScaling) {
    expect(SetScreenScaling(*state.screenScaling), "The screen's scaling could not be restored.");
  }
  if (state.foregroundLock) SetForegroundLock(*state.foregroundLock);
  if (!state.workFolder.empty()) {
    expect(RemoveFolder(state.workFolder), "The folder of the test files could not be removed.");
  }
  return failures;
}

std::string RecordOf(const UserState& state) {
  RecordWriter record;
  record.Add(RecordName);
  record.AddNumber(state.keys.size());
  for (const RegistryCopy& key : state.keys) Write(record, key);
  record.AddNumber(state.sendToLink ? 1 : 0);
  record.Add(state.sendToLink.value_or(""));
  Write(record, state.clipboard);
  record.AddNumber(state.highContrast ? 1 : 0);
  const HighContrastSetting contrast = state.highContrast.value_or(HighContrastSetting{});
  record.AddNumber(contrast.flags);
  record.Add(BytesOf(contrast.scheme));
  record.AddNumber(static_cast<uint64_t>(state.screenScaling.value_or(0)));
  record.AddNumber(state.foregroundLock ? 1 : 0);
  record.AddNumber(state.foregroundLock.value_or(0));
  record.Add(BytesOf(state.workFolder));
  record.Add(RecordEnd);
  return record.Bytes();
}

UserState ReadUserState(const std::string& bytes) {
  RecordReader record(bytes);
  if (record.Next() != RecordName) throw std::runtime_error("the record has an unknown format");
  UserState state;
  for (uint64_t count = record.NextNumber(); count > 0; --count) {
    state.keys.push_back(ReadRegistryCopy(record));
  }
  const bool hasLink = record.NextNumber() != 0;
  std::string link = record.Next();
  if (hasLink) state.sendToLink = std::move(link);
  state.clipboard = ReadClipboardCopy(record);
  const bool hasContrast = record.NextNumber() != 0;
  HighContrastSetting contrast = {.flags = static_cast<DWORD>(record.NextNumber())};
  contrast.scheme = WideOf(record.Next());
  if (hasContrast) state.highContrast = std::move(contrast);
  if (const auto scaling = static_cast<int>(record.NextNumber()); scaling != 0) {
    state.screenScaling = scaling;
  }
  const bool hasLock = record.NextNumber() != 0;
  const auto lock = static_cast<DWORD>(record.NextNumber());
  if (hasLock) state.foregroundLock = lock;
  state.workFolder = WideOf(record.Next());
  if (record.Next() != RecordEnd) throw std::runtime_error("the record is incomplete");
  return state;
}

void AllowForeground() { SetForegroundLock(0); }

}  // namespace kit
