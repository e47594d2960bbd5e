// Reads text of any length line by line, from a file or from standard input.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "swr/system/file.h"

namespace cli {

// Used by one thread at a time.
class LineSource {
 public:
  // Longer than any name or checksum line.
  static constexpr size_t LongestLine = 1048576;  // bytes

  // `path`: "-" for standard input. Lines end in `separator`. A byte-order mark at the start
  // selects UTF-16. Returns 0 or a Windows error code.
  [[nodiscard]] uint32_t Open(const std::u16string& path, char separator = '\n');

  // The next line without its separator, decoded as in system/name_bytes.h. False at the end and on
  // an error. Lines are truncated to LongestLine.
  bool Next(std::u16string& line);
  // The same without the limit, with the line's original bytes, including the separator.
  bool Next(std::u16string& line, std::string& bytes);

  // 0, or the error code of a failed read.
  uint32_t Error() const { return error_; }

  enum class Encoding : uint8_t { Bytes, Utf16LowFirst, Utf16HighFirst };
  Encoding TextEncoding() const { return encoding_; }
  // The byte-order mark at the start of the text; empty without one.
  const std::string& Mark() const { return mark_; }

 private:
  // A line of the text, valid until more is read.
  struct Taken {
    std::string_view text;   // without the separator, truncated to `longest`
    std::string_view whole;  // with it
  };
  bool TakeLine(size_t longest, Taken& taken);
  // Reads more bytes into `pending_`. False at the end.
  bool Fill();
  void TakeMark();
  // The position of the next separator at or after `from`, or npos.
  size_t FindSeparator(size_t from) const;
  std::u16string Decode(std::string_view bytes) const;

  swr::File file_;
  std::string pending_;
  size_t start_ = 0;  // of the bytes in `pending_` that have not been taken
  char separator_ = '\n';
  Encoding encoding_ = Encoding::Bytes;
  std::string mark_;
  bool atEnd_ = false;
  uint32_t error_ = 0;
};

}  // namespace cli
