// A binary record of fields, each preceded by its length. Reading detects a truncated record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kit {

class RecordWriter {
 public:
  void Add(std::string_view bytes) {
    AddNumber(bytes.size());
    content_ += bytes;
  }
  void AddNumber(uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8) content_ += static_cast<char>(number >> shift);
  }
  const std::string& Bytes() const { return content_; }

 private:
  std::string content_;
};

// Reads the fields in the order in which they were written. Throws std::runtime_error when a field
// is truncated.
class RecordReader {
 public:
  explicit RecordReader(std::string_view bytes) : rest_(bytes) {}

  std::string Next() {
    const uint64_t size = NextNumber();
    return std::string(Take(size));
  }
  uint64_t NextNumber() {
    const std::string_view bytes = Take(8);
    uint64_t number = 0;
    for (size_t i = 8; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[i]);
    return number;
  }
  bool IsAtEnd() const { return rest_.empty(); }

 private:
  std::string_view Take(uint64_t size) {
    if (size > rest_.size()) throw std::runtime_error("the record is truncated");
    const std::string_view taken = rest_.substr(0, static_cast<size_t>(size));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view rest_;
};

}  // namespace kit
