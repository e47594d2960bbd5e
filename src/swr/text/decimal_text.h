// Whole numbers as text.
#pragma once

#include <cstdint>
#include <string>

namespace swr {

// Plain decimal digits, without grouping.
inline std::u16string DecimalText(uint64_t value) {
  const std::string digits = std::to_string(value);
  return std::u16string(digits.begin(), digits.end());
}

}  // namespace swr
