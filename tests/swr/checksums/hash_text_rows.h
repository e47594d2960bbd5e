// Shorthand for digests and candidates in test tables.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "swr/hash/algorithms.h"

namespace swr::testing {

inline const std::vector<AlgoId> Four = {AlgoId::Crc32};
inline const std::vector<AlgoId> Eight = {AlgoId::Xxh64, AlgoId::Xxh3_64};
inline const std::vector<AlgoId> Sixteen = {AlgoId::Md5, AlgoId::Xxh128, AlgoId::Md4, AlgoId::Md2};
inline const std::vector<AlgoId> Twenty = {AlgoId::Sha1};
inline const std::vector<AlgoId> ThirtyTwo = {AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3};
inline const std::vector<AlgoId> FortyEight = {AlgoId::Sha384, AlgoId::Sha3_384};
inline const std::vector<AlgoId> SixtyFour = {AlgoId::Sha512, AlgoId::Sha3_512};

// Bytes 01, 02, 03...
inline std::vector<uint8_t> CountedBytes(size_t count) {
  std::vector<uint8_t> bytes;
  for (size_t i = 1; i <= count; ++i) bytes.push_back(static_cast<uint8_t>(i));
  return bytes;
}

// The same in hexadecimal, with a separator between the bytes.
inline std::u16string CountedHex(size_t count, std::u16string_view between = {},
                                 bool uppercase = false) {
  const std::u16string_view digits = uppercase ? u"0123456789ABCDEF" : u"0123456789abcdef";
  std::u16string text;
  for (const uint8_t byte : CountedBytes(count)) {
    if (!text.empty()) text += between;
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text;
}

// The same in base64, as made by `base64` of the GNU core utilities.
inline constexpr std::u16string_view CountedBase64Of32 =
    u"AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0eHyA=";
inline constexpr std::u16string_view CountedBase64Of48 =
    u"AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0eHyAhIiMkJSYnKCkqKywtLi8w";
inline constexpr std::u16string_view CountedBase64Of64 =
    u"AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0eHyAhIiMkJSYnKCkqKywtLi8wMTIzNDU2Nzg5Ojs8PT4/QA==";

}  // namespace swr::testing
