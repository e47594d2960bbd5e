// What the program shares with the user's other programs: the clipboard, and its settings.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace app::testing {

// As when the user copies a text in another program.
void CopyText(const std::u16string& text);
// The text on the clipboard; nothing when it holds none.
std::optional<std::u16string> CopiedText();
void EmptyClipboardNow();

// The values under the program's key, of any type; numbers as four bytes, the lowest first.
std::optional<std::vector<uint8_t>> ReadSetting(const std::u16string& name);
std::optional<uint32_t> ReadNumberSetting(const std::u16string& name);
void WriteSetting(const std::u16string& name, uint32_t value);
void WriteSetting(const std::u16string& name, const std::vector<uint8_t>& bytes);
void WriteSetting(const std::u16string& name, const std::u16string& text);
// Deletes the whole key, as before the program's first run.
void ForgetSettings();

// Makes this program the one that opens web and mail addresses, and forgets what it has opened.
// False on a real Windows, where only its user can choose; a test must not open an address then.
bool BecomeTheBrowser();
inline constexpr char NotTheBrowser[] = "no program can make itself the browser here";
// The last address that was opened.
std::u16string OpenedAddress();
// The part of the tests' program that acts as the browser.
void KeepOpenedAddress(const std::wstring& address);
// The option before the address with which it is started then.
inline constexpr char BrowserOption[] = "--open-address";

// The tests' program also plays the command-line tool, under the tool's name. It then records the
// folder in which it was started and its arguments, with "|" between them.
inline constexpr wchar_t ToolName[] = L"swrhash.exe";
void KeepToolRun(const std::wstring& arguments);
std::wstring ToolRun();

// The processes of this program that `parent` has started, by their ids, and their end.
std::vector<uint32_t> ProgramsStartedBy(uint32_t parent, const std::wstring& fileName);
void EndProgramsStartedBy(uint32_t parent, const std::wstring& fileName);

// Closes the file manager's window of a folder with this name; false when there is none.
bool CloseFolderWindow(const std::u16string& folderName);

}  // namespace app::testing
