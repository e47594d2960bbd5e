// Reading a whole text file under a size limit.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace swr {

inline constexpr uint64_t LargestTextFile = 67108864;  // bytes: 64 MiB

// The decoded text of the file (see DecodeTextBytes). On failure the result is empty and `error`,
// unless null, takes a Windows error code: 223 for a file over LargestTextFile, of which no byte is
// read. On success `error` is untouched. A file that grows meanwhile is cut at its old size.
std::optional<std::u16string> ReadTextFile(const std::u16string& path, uint32_t* error);

}  // namespace swr
