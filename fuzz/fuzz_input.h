// The fuzzer's bytes as the kinds of input that the program gets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "swr/text/encoding.h"

namespace fuzz {

inline std::string_view BytesOf(const uint8_t* data, size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Text of any units: a byte-order mark for UTF-16 in front lets lone surrogates through.
inline std::u16string TextOf(const uint8_t* data, size_t size) {
  return swr::DecodeTextBytes(BytesOf(data, size));
}

}  // namespace fuzz

// What libFuzzer calls with each input (https://llvm.org/docs/LibFuzzer.html).
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
