#include "tests/kit/tool_digest.h"

#include <cctype>

namespace kit {

std::string DigestInOutput(std::string_view output, size_t digits) {
  std::string line;  // without blanks
  std::string word;  // hexadecimal digits without separators
  for (const char unit : std::string(output) + "\n") {
    const auto letter = static_cast<unsigned char>(unit);
    if (std::isxdigit(letter)) {
      word += static_cast<char>(std::tolower(letter));
      line += word.back();
      continue;
    }
    if (word.size() == digits) return word;
    word.clear();
    if (unit == '\n') {
      if (line.size() == digits && line.find_first_not_of("0123456789abcdef") == line.npos) {
        return line;
      }
      line.clear();
    } else if (unit != ' ' && unit != '\r') {
      line += unit;
    }
  }
  return {};
}

}  // namespace kit
