// Conversion of the fuzzer's bytes to the inputs of the program.
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

// May contain any code units: after a UTF-16 byte-order mark, lone surrogates are possible.
inline std::u16string TextOf(const uint8_t* data, size_t size) {
  return swr::DecodeTextBytes(BytesOf(data, size));
}

}  // namespace fuzz

// What libFuzzer calls with each input (https://llvm.org/docs/LibFuzzer.html).
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
