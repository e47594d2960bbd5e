#include "swr/text/text_file.h"

#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/text/encoding.h"

namespace swr {
namespace {

// Reads the bytes of an opened file into `bytes`; returns 0 or a Windows error code.
uint32_t ReadBytes(File& file, std::string& bytes) {
  const std::optional<FileInfo> info = file.Info();
  if (!info || info->size > LargestTextFile) return ErrorFileTooLarge;
  if (info->isDirectory) return ErrorAccessDenied;
  bytes.resize(static_cast<size_t>(info->size));
  size_t filled = 0;
  while (filled < bytes.size()) {
    const ReadResult read =
        file.Read(bytes.data() + filled, static_cast<uint32_t>(bytes.size() - filled));
    if (!read.succeeded) return read.error;
    if (read.bytes == 0) break;  // the file shrank
    filled += read.bytes;
  }
  bytes.resize(filled);
  return 0;
}

}  // namespace

std::optional<std::u16string> ReadTextFile(const std::u16string& path, uint32_t* error) {
  File file;
  std::string bytes;
  uint32_t code = File::Open(ToLongPath(path), FileSharing::ReadWrite, file);
  if (code == 0) code = ReadBytes(file, bytes);
  if (code == 0) return DecodeTextBytes(bytes);
  if (error != nullptr) *error = code;
  return std::nullopt;
}

}  // namespace swr
