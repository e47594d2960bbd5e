#include "app/dialogs/hash_text.h"

#include "swr/hash/digest_text.h"
#include "swr/hash/hasher.h"
#include "swr/text/decimal_text.h"
#include "swr/text/encoding.h"

namespace app {
namespace {

constexpr std::u16string_view LineEnd = u"\r\n";
constexpr std::u16string_view BlankLine = u"\r\n\r\n";

std::u16string WithBreaks(std::u16string_view text, const TextForm& form) {
  std::u16string changed;
  changed.reserve(text.size() + LineEnd.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isPair = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
    if (!form.lfBreaks || !isPair) changed += text[i];
  }
  if (form.finalBreak) changed += form.lfBreaks ? LineEnd.substr(1) : LineEnd;
  return changed;
}

}  // namespace

std::vector<uint8_t> TextToHashBytes(std::u16string_view text, const TextForm& form) {
  const std::u16string changed = WithBreaks(text, form);
  std::vector<uint8_t> bytes;
  if (form.utf16) {
    bytes.reserve(changed.size() * 2);
    for (const char16_t unit : changed) {
      bytes.push_back(static_cast<uint8_t>(unit & 0xFF));
      bytes.push_back(static_cast<uint8_t>(unit >> 8));
    }
  } else {
    const std::string utf8 = swr::WideToUtf8(changed);
    bytes.assign(utf8.begin(), utf8.end());
  }
  return bytes;
}

std::u16string HashTextResult(std::u16string_view text, const TextForm& form, swr::AlgoMask mask,
                              bool uppercase) {
  const std::vector<uint8_t> bytes = TextToHashBytes(text, form);
  std::u16string result;
  for (const swr::AlgoId id : swr::IdsFromMask(mask)) {
    if (!result.empty()) result += LineEnd;
    result += swr::GetAlgo(id).name;
    result += u":\t";
    result += swr::DigestToWideHex(swr::HashBytes(id, bytes), uppercase);
  }
  result += BlankLine;
  result += swr::DecimalText(bytes.size());
  return result + (bytes.size() == 1 ? u" byte" : u" bytes");
}

std::u16string_view DigestLines(std::u16string_view result) {
  return result.substr(0, result.find(BlankLine));
}

}  // namespace app
