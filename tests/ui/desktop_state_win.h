// The state outside the program that its tests need: the clipboard, its settings, the browser and
// the file manager.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace app::testing {

// As if the user had copied a text in another program.
void CopyText(const std::u16string& text);
// The text on the clipboard, if there is one.
std::optional<std::u16string> CopiedText();
void EmptyClipboardNow();

// The values under the program's key, of any type; numbers as four little-endian bytes.
std::optional<std::vector<uint8_t>> ReadSetting(const std::u16string& name);
std::optional<uint32_t> ReadNumberSetting(const std::u16string& name);
void WriteSetting(const std::u16string& name, uint32_t value);
void WriteSetting(const std::u16string& name, const std::vector<uint8_t>& bytes);
void WriteSetting(const std::u16string& name, const std::u16string& text);
// Deletes the whole key, as before the program's first run.
void DeleteSettings();

// Makes this program the handler of web and mail addresses, and clears the record of opened ones.
// False on real Windows, where only the user can choose the browser; then a test must not open an
// address.
bool BecomeTheBrowser();
inline constexpr char NotTheBrowser[] = "no program can make itself the browser here";
// The address opened last.
std::u16string OpenedAddress();
// Called when the test program is started as the browser.
void RecordOpenedAddress(const std::wstring& address);
// The option before the address on its command line.
inline constexpr char BrowserOption[] = "--open-address";

// The test program also stands in for the command-line tool, under the tool's name. It then records
// its current folder and its arguments, separated by "|".
inline constexpr wchar_t ToolName[] = L"swrhash.exe";
void RecordToolRun(const std::wstring& arguments);
std::wstring RecordedToolRun();

// The ids of the processes with this file name that `parent` has started. The second function ends
// them.
std::vector<uint32_t> ProgramsStartedBy(uint32_t parent, const std::wstring& fileName);
void EndProgramsStartedBy(uint32_t parent, const std::wstring& fileName);

// Closes the file manager's window of a folder with this name; false when there is none.
bool CloseFolderWindow(const std::u16string& folderName);

}  // namespace app::testing
