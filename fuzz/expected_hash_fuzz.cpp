// Parses the text of the Expected hash box.
#include "fuzz/fuzz_input.h"
#include "fuzz/parsed_hash_requirements.h"
#include "swr/hash/digest_text.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  const std::optional<swr::ParsedHash> hash = swr::ParseExpectedHash(text);
  fuzz::Require(swr::ParseExpectedHash(text) == hash, "parsing is repeatable");
  fuzz::Require(swr::ParseExpectedHash(u"\n \t\r\n" + text) == hash, "blank lines do not matter");
  if (!hash) return 0;
  fuzz::RequireSound(*hash);
  fuzz::Require(swr::ParseExpectedHash(text + u"\nnot a hash") == hash,
                "only the first line matters");
  return 0;
}
