// The text that the Hash Text dialog shows: the digests of a typed text, which depend on how it is
// turned into bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "swr/hash/algorithms.h"

namespace app {

struct TextForm {
  bool utf16 = false;       // UTF-16 LE, else UTF-8; both without a byte-order mark
  bool lfBreaks = true;     // CR LF becomes LF; otherwise the text is hashed as it is
  bool finalBreak = false;  // one more line break at the end
};

std::vector<uint8_t> TextToHashBytes(std::u16string_view text, const TextForm& form);

// A line for each algorithm of the mask, a blank one, and the number of bytes hashed.
std::u16string HashTextResult(std::u16string_view text, const TextForm& form, swr::AlgoMask mask,
                              bool uppercase);
// The part of such a text that is copied: the digests.
std::u16string_view DigestLines(std::u16string_view result);

}  // namespace app
