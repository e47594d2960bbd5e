// Parses clipboard texts.
#include "fuzz/fuzz_input.h"
#include "fuzz/parsed_hash_requirements.h"
#include "swr/text/text.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  const std::optional<swr::ParsedHash> hash = swr::ParseClipboardHash(text);
  fuzz::Require(swr::ParseClipboardHash(u" \r\n" + text + u"\t") == hash,
                "surrounding blanks do not matter");
  if (!hash) return 0;
  fuzz::RequireSound(*hash);
  const std::u16string_view trimmed = swr::TrimText(text);
  fuzz::Require(trimmed.size() <= 300, "a long text is not a hash");
  fuzz::Require(trimmed.find(u'\n') == trimmed.npos, "several lines are not a hash");
  fuzz::Require(hash->digest.size() >= 16, "a short value is not a hash");
  return 0;
}
