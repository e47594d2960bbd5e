#include "swr/text/display_text.h"

#include <array>
#include <charconv>
#include <string_view>

#include "swr/system/text_services.h"
#include "swr/text/decimal_text.h"

namespace swr {

std::u16string FormatSize(uint64_t bytes) {
  if (bytes < 1024) return DecimalText(bytes) + (bytes == 1 ? u" byte" : u" bytes");
  constexpr std::array<std::u16string_view, 5> units = {u" KB", u" MB", u" GB", u" TB", u" PB"};
  size_t unit = 0;
  double value = static_cast<double>(bytes) / 1024;
  while (value >= 1024 && unit + 1 < units.size()) {
    value /= 1024;
    ++unit;
  }
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::fixed, value < 10 ? 1 : 0);
  std::u16string text(digits.data(), end.ptr);
  text += units[unit];
  return text;
}

std::u16string FormatErrorText(uint32_t error) {
  std::u16string text = SystemErrorText(error);
  if (text.empty()) text = u"Error " + DecimalText(error);
  // Callers add their own full stop.
  while (!text.empty() && std::u16string_view(u"\n\r .").find(text.back()) != text.npos) {
    text.pop_back();
  }
  return text;
}

}  // namespace swr
