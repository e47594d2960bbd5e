// Reads a whole text file of limited size.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace swr {

inline constexpr uint64_t LargestTextFile = 67108864;  // bytes: 64 MiB

// Reads and decodes the file (see DecodeTextBytes). On failure returns nothing and, unless `error`
// is null, sets it to a Windows error code, which is 0 if the system gives none, and 223 for a file
// larger than LargestTextFile, which is not read. On success `error` is unchanged. Others may read
// and write the file in the meantime; if it grows, only its old size is read. Needs about three
// times the size of the file in memory.
std::optional<std::u16string> ReadTextFile(const std::u16string& path, uint32_t* error);

}  // namespace swr
