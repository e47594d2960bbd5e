// Which rules paths follow here, and making a path absolute and clean without touching the file
// system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace swr {

// Whose rules a pure path function follows. It defaults to the build's own, so that Windows rules
// are tested everywhere.
enum class PathStyle : uint8_t { Windows, Posix };

inline constexpr PathStyle NativePathStyle =
    std::filesystem::path::preferred_separator == '\\' ? PathStyle::Windows : PathStyle::Posix;

// The longest path, in code units, that a full path may have: the system's own limit less its
// terminator.
inline constexpr size_t LongestFullPath = 32767;

// `path` against the process's current folder, with "." and ".." steps resolved. Nothing when the
// system can't make it (an empty path, for one) or the result would exceed LongestFullPath.
std::optional<std::u16string> SystemFullPath(const std::u16string& path);

}  // namespace swr
