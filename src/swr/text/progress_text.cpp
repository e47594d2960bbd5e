#include "swr/text/progress_text.h"

#include <algorithm>
#include <limits>

#include "swr/text/decimal_text.h"

namespace swr {

uint64_t FractionOf(uint64_t part, uint64_t whole, uint64_t steps) {
  // If the product would not fit in 64 bits, halving both keeps the ratio.
  while (part > std::numeric_limits<uint64_t>::max() / steps) {
    part /= 2;
    whole /= 2;
  }
  return part * steps / whole;
}

std::u16string FormatTimeLeft(double seconds) {
  const auto whole =
      static_cast<uint64_t>(std::min(seconds, double{std::numeric_limits<int32_t>::max()}));
  std::u16string text = DecimalText(whole / 60) + u":";
  if (whole % 60 < 10) text += u'0';
  return text + DecimalText(whole % 60);
}

}  // namespace swr
