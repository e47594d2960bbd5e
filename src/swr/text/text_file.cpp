#include "swr/text/text_file.h"

#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/text/encoding.h"

namespace swr {
namespace {

// The content of an open file. On failure returns nothing and sets `error` to a Windows error code,
// which is 0 if the system gives none.
std::optional<std::string> ReadBytes(File& file, uint32_t& error) {
  const auto fail = [&error](uint32_t code) {
    error = code;
    return std::nullopt;
  };
  const std::optional<FileInfo> info = file.Info();
  if (!info || info->size > LargestTextFile) return fail(ErrorFileTooLarge);
  if (info->isDirectory) return fail(ErrorAccessDenied);
  std::string bytes(static_cast<size_t>(info->size), '\0');
  size_t filled = 0;
  while (filled < bytes.size()) {
    const ReadResult read =
        file.Read(bytes.data() + filled, static_cast<uint32_t>(bytes.size() - filled));
    if (!read.succeeded) return fail(read.error);
    if (read.bytes == 0) break;  // the file shrank
    filled += read.bytes;
  }
  bytes.resize(filled);
  return bytes;
}

}  // namespace

std::optional<std::u16string> ReadTextFile(const std::u16string& path, uint32_t* error) {
  File file;
  uint32_t code = File::Open(ToLongPath(path), FileSharing::ReadWrite, file);
  if (code == 0) {
    if (const auto bytes = ReadBytes(file, code)) return DecodeTextBytes(*bytes);
  }
  if (error != nullptr) *error = code;
  return std::nullopt;
}

}  // namespace swr
