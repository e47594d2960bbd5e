// The platform's part of temp_tree.cpp.
#pragma once

#include <string>
#include <string_view>

namespace swr::testing {

// Creates a folder with a unique name and returns its full path.
std::u16string MakeUniqueFolder();
// No error when the folder exists.
void MakeFolder(const std::u16string& path);
void RemoveTree(const std::u16string& path);

// Throws std::runtime_error: `action` failed on `path` with the system's own `code`.
[[noreturn]] void ThrowFailure(std::string_view action, const std::u16string& path, long code);

}  // namespace swr::testing
