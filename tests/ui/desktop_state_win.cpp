#include "tests/ui/desktop_state_win.h"

#include "swr/system/windows_api_win.h"

#include <tlhelp32.h>

#include <algorithm>
#include <stdexcept>

#include "app/desktop/clipboard_win.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/wine_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

constexpr wchar_t browserKey[] = L"Software\\Sumwright browser of the tests";
constexpr wchar_t settingsKey[] = L"Software\\Zendrik\\Sumwright";

struct StoredValue {
  DWORD type = 0;
  std::vector<uint8_t> bytes;
};

std::optional<StoredValue> Read(const std::u16string& name) {
  StoredValue value;
  DWORD size = 0;
  if (RegGetValueW(HKEY_CURRENT_USER, settingsKey, swr::AsWide(name), RRF_RT_ANY, &value.type,
                   nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.bytes.resize(size);
  RegGetValueW(HKEY_CURRENT_USER, settingsKey, swr::AsWide(name), RRF_RT_ANY, nullptr,
               value.bytes.data(), &size);
  return value;
}

void Write(const std::u16string& name, DWORD type, const void* data, size_t size) {
  if (RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, swr::AsWide(name), type, data,
                      static_cast<DWORD>(size)) != ERROR_SUCCESS) {
    throw std::runtime_error("a registry value can't be written");
  }
}

struct FolderSearch {
  std::wstring name;
  HWND found = nullptr;
};

// The title is the folder's name, or its path if the user has chosen that, and on Windows 11 is
// followed by the file manager's name.
BOOL CALLBACK FindFolderWindow(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<FolderSearch*>(parameter);
  wchar_t text[512] = {};
  GetClassNameW(window, text, 512);
  const std::wstring className = text;
  if (className != L"CabinetWClass" && className != L"ExplorerWClass") return TRUE;
  GetWindowTextW(window, text, 512);
  std::wstring title = text;
  if (!title.ends_with(search.name)) title.erase(std::min(title.size(), title.rfind(L" - ")));
  const bool isWanted = title == search.name || title.ends_with(L"\\" + search.name);
  if (!isWanted || !IsWindowVisible(window)) return TRUE;
  search.found = window;
  return FALSE;
}

}  // namespace

void CopyText(const std::u16string& text) {
  // Another program may have the clipboard open at this moment.
  const bool copied = WaitFor([&] {
    WriteClipboardText(nullptr, TextInParts::Of(text));
    return CopiedText() == text;
  });
  if (!copied) throw std::runtime_error("no text can be put on the clipboard");
}

std::optional<std::u16string> CopiedText() { return ReadClipboardText(nullptr); }

void EmptyClipboardNow() {
  WaitFor([] { return OpenClipboard(nullptr) != FALSE; });
  EmptyClipboard();
  CloseClipboard();
}

std::optional<std::vector<uint8_t>> ReadSetting(const std::u16string& name) {
  const auto value = Read(name);
  if (!value) return std::nullopt;
  return value->bytes;
}

std::optional<uint32_t> ReadNumberSetting(const std::u16string& name) {
  const auto value = Read(name);
  if (!value || value->type != REG_DWORD || value->bytes.size() != 4) return std::nullopt;
  const std::vector<uint8_t>& bytes = value->bytes;
  return bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[3]} << 24;
}

void WriteSetting(const std::u16string& name, uint32_t value) {
  Write(name, REG_DWORD, &value, sizeof value);
}

void WriteSetting(const std::u16string& name, const std::vector<uint8_t>& bytes) {
  Write(name, REG_BINARY, bytes.data(), bytes.size());
}

void WriteSetting(const std::u16string& name, const std::u16string& text) {
  Write(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(char16_t));
}

bool BecomeTheBrowser() {
  RecordOpenedAddress(L"");
  if (!swr::testing::IsWine()) return false;
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  const std::wstring command = L"\"" + std::wstring(program) + L"\" --open-address \"%1\"";
  for (const wchar_t* key : {L"https\\shell\\open\\command", L"mailto\\shell\\open\\command"}) {
    RegSetKeyValueW(HKEY_CLASSES_ROOT, key, nullptr, REG_SZ, command.c_str(),
                    static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t)));
  }
  return true;
}

std::u16string OpenedAddress() {
  wchar_t address[1024] = {};
  DWORD size = sizeof address;
  RegGetValueW(HKEY_CURRENT_USER, browserKey, L"Address", RRF_RT_REG_SZ, nullptr, address, &size);
  return swr::FromWide(address);
}

void RecordOpenedAddress(const std::wstring& address) {
  RegSetKeyValueW(HKEY_CURRENT_USER, browserKey, L"Address", REG_SZ, address.c_str(),
                  static_cast<DWORD>((address.size() + 1) * sizeof(wchar_t)));
}

std::wstring RecordedToolRun() {
  wchar_t text[2048] = {};
  DWORD size = sizeof text;
  RegGetValueW(HKEY_CURRENT_USER, browserKey, L"Tool", RRF_RT_REG_SZ, nullptr, text, &size);
  return text;
}

void RecordToolRun(const std::wstring& arguments) {
  wchar_t folder[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, folder);
  const std::wstring text = folder + (L"|" + arguments);
  RegSetKeyValueW(HKEY_CURRENT_USER, browserKey, L"Tool", REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

std::vector<uint32_t> ProgramsStartedBy(uint32_t parent, const std::wstring& fileName) {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  std::vector<uint32_t> ids;
  for (BOOL more = Process32FirstW(snapshot, &entry); more;
       more = Process32NextW(snapshot, &entry)) {
    if (fileName == entry.szExeFile && entry.th32ParentProcessID == parent) {
      ids.push_back(entry.th32ProcessID);
    }
  }
  CloseHandle(snapshot);
  return ids;
}

void EndProgramsStartedBy(uint32_t parent, const std::wstring& fileName) {
  for (const uint32_t id : ProgramsStartedBy(parent, fileName)) {
    const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, id);
    TerminateProcess(process, 0);
    CloseHandle(process);
  }
}

bool CloseFolderWindow(const std::u16string& folderName) {
  FolderSearch search = {.name = swr::AsWide(folderName)};
  EnumWindows(FindFolderWindow, reinterpret_cast<LPARAM>(&search));
  if (search.found == nullptr) return false;
  PostMessageW(search.found, WM_CLOSE, 0, 0);
  return true;
}

void DeleteSettings() { RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey); }

}  // namespace app::testing
