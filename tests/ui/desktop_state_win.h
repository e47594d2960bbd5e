// What the program shares with all other programs of the user: the clipboard, and its settings.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace app::testing {

// As when the user copies a text in another program.
void CopyText(const std::u16string& text);
// What stands there; nothing when it is no text.
std::optional<std::u16string> CopiedText();
void EmptyClipboardNow();

// The values under the program's key, of any type; numbers as four bytes, the lowest first.
std::optional<std::vector<uint8_t>> ReadSetting(const std::u16string& name);
std::optional<uint32_t> ReadNumberSetting(const std::u16string& name);
void WriteSetting(const std::u16string& name, uint32_t value);
void WriteSetting(const std::u16string& name, const std::vector<uint8_t>& bytes);
void WriteSetting(const std::u16string& name, const std::u16string& text);
// The whole key: as before the program's first run.
void ForgetSettings();

// Makes this program the one that opens web and mail addresses, and forgets what it has opened.
void BecomeTheBrowser();
// The last address that was opened.
std::u16string OpenedAddress();
// What the program does when it is started as the browser.
void KeepOpenedAddress(const std::wstring& address);
// The option in front of the address with which it then is started.
inline constexpr char BrowserOption[] = "--open-address";

// The tests' program also stands in for the command-line tool, under the tool's name. Then it keeps
// the folder in which it was started and its arguments, with "|" between them.
inline constexpr wchar_t ToolName[] = L"swrhash.exe";
void KeepToolRun(const std::wstring& arguments);
std::wstring ToolRun();

// Ends all processes of this program.
void EndPrograms(const std::wstring& fileName);

// Closes the file manager's window with this title; false when there is none.
bool CloseFolderWindow(const std::u16string& title);

}  // namespace app::testing
