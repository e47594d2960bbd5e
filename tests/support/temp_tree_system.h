// What temp_tree.cpp wants of the platform; each has its own file.
#pragma once

#include <string>
#include <string_view>

namespace swr::testing {

// Makes a folder that nobody else has and returns its full path.
std::u16string MakeUniqueFolder();
// No error when the folder exists.
void MakeFolder(const std::u16string& path);
void RemoveTree(const std::u16string& path);

// Throws: `action` failed on `path`. The system's own code is `code`.
[[noreturn]] void ThrowFailure(std::string_view action, const std::u16string& path, long code);

}  // namespace swr::testing
