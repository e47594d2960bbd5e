// The path rules of this platform, and making a path absolute and normalized without accessing the
// file system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace swr {

// The path rules that a function follows. An argument, so that the Windows rules can be tested on
// every platform.
enum class PathStyle : uint8_t { Windows, Posix };

inline constexpr PathStyle NativePathStyle =
    std::filesystem::path::preferred_separator == '\\' ? PathStyle::Windows : PathStyle::Posix;

// The longest full path in code units: the limit of Windows without the terminator.
inline constexpr size_t LongestFullPath = 32767;

// `path` made absolute, starting from the current folder of the process, with "." and ".."
// resolved.
// Nothing if the path is empty, the system refuses it, or the result would be longer than
// LongestFullPath.
std::optional<std::u16string> SystemFullPath(const std::u16string& path);

}  // namespace swr
