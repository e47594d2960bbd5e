// The result that the Hash Text dialog shows: the digests of a text, which depend on how the text
// is encoded.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "swr/hash/algorithms.h"

namespace app {

struct TextForm {
  bool utf16 = false;       // UTF-16 LE, else UTF-8; both without a byte-order mark
  bool lfBreaks = true;     // CR LF becomes LF; otherwise line breaks are unchanged
  bool finalBreak = false;  // one more line break at the end
};

std::vector<uint8_t> TextToHashBytes(std::u16string_view text, const TextForm& form);

// A line for each algorithm in the mask, a blank line, and the number of bytes hashed.
std::u16string HashTextResult(std::u16string_view text, const TextForm& form, swr::AlgoMask mask,
                              bool uppercase);
// The part of such a result that is copied: the digests.
std::u16string_view DigestLines(std::u16string_view result);

}  // namespace app
