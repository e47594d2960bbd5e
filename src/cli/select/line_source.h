// A text that is read line by line, from a file or from standard input, however long it is.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "swr/system/file.h"

namespace cli {

// Used by one thread at a time.
class LineSource {
 public:
  // No name and no checksum line is as long.
  static constexpr size_t LongestLine = 1048576;  // bytes

  // `path`: "-" for standard input. Lines end in `separator`. A mark at the start says whether the
  // text is UTF-16. The result is 0 or a Windows error code.
  [[nodiscard]] uint32_t Open(const std::u16string& path, char separator = '\n');

  // The next line without its separator, decoded as system/name_bytes.h has it. False at the end
  // and on an error. A line beyond LongestLine is cut off there.
  bool Next(std::u16string& line);
  // The same for a line of any length, and its bytes as they stand in the text, separator included.
  bool Next(std::u16string& line, std::string& bytes);

  // 0, or the code of the error at which reading ended.
  uint32_t Error() const { return error_; }

  enum class Encoding : uint8_t { Bytes, Utf16LowFirst, Utf16HighFirst };
  Encoding TextEncoding() const { return encoding_; }
  // The mark at the start of the text; empty without one.
  const std::string& Mark() const { return mark_; }

 private:
  // A line of the text, valid until more is read.
  struct Taken {
    std::string_view text;   // without the separator, at most the longest
    std::string_view whole;  // with it
  };
  bool TakeLine(size_t longest, Taken& taken);
  // Reads on until `pending_` has more. False when there is nothing more.
  bool Fill();
  void TakeMark();
  // The place of the next separator at or behind `from`, npos without one.
  size_t FindSeparator(size_t from) const;
  std::u16string Decode(std::string_view bytes) const;

  swr::File file_;
  std::string pending_;
  size_t start_ = 0;  // of what is not yet taken
  char separator_ = '\n';
  Encoding encoding_ = Encoding::Bytes;
  std::string mark_;
  bool atEnd_ = false;
  uint32_t error_ = 0;
};

}  // namespace cli
