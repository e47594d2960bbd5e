// Whole files and folders of the kit.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>

namespace kit {

// Nothing when the file can't be read.
std::optional<std::string> ReadBytes(const std::wstring& path);
// Replaces the file at once: whenever it is read, it is the old one or the new one. False when it
// can't be written.
bool WriteBytes(const std::wstring& path, const std::string& bytes);
// With all that is in it; links are removed, not followed. True also when there is no such folder.
bool RemoveFolder(const std::wstring& path);
bool Exists(const std::wstring& path);

}  // namespace kit
