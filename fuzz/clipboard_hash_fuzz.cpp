// A text from the clipboard of which nobody has said that it is a hash.
#include "fuzz/fuzz_input.h"
#include "fuzz/parsed_hash_requirements.h"
#include "swr/text/text.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  const std::optional<swr::ParsedHash> hash = swr::ParseClipboardHash(text);
  fuzz::Require(swr::ParseClipboardHash(u" \r\n" + text + u"\t") == hash,
                "blanks around it do not count");
  if (!hash) return 0;
  fuzz::RequireSound(*hash);
  const std::u16string_view trimmed = swr::TrimText(text);
  fuzz::Require(trimmed.size() <= 300, "a long text is no hash");
  fuzz::Require(trimmed.find(u'\n') == trimmed.npos, "several lines are no hash");
  fuzz::Require(hash->digest.size() >= 16, "a short value is no hash");
  return 0;
}
