// Reading, writing and removing whole files and folders of the kit.
#pragma once

#include "swr/system/windows_api_win.h"

#include <optional>
#include <string>

namespace kit {

// Nothing when the file can't be read.
std::optional<std::string> ReadBytes(const std::wstring& path);
// Replaces the file atomically: readers see either the old or the new content. False when it can't
// be written.
bool WriteBytes(const std::wstring& path, const std::string& bytes);
// Removes the folder with its content; links are removed, not followed. True also when the folder
// does not exist.
bool RemoveFolder(const std::wstring& path);
bool Exists(const std::wstring& path);

}  // namespace kit
