#include "app/flows/clipboard_watch.h"

#include <optional>
#include <utility>

#include "app/screen/link_ids.h"
#include "swr/checksums/pasted_hash.h"
#include "swr/text/decimal_text.h"
#include "swr/text/text.h"

namespace app {
namespace {

// Such as "a SHA-256 hash" or "a 256-bit hash".
std::u16string HashLabel(const swr::ParsedHash& hash) {
  if (!hash.explicitAlgo) return u"a " + swr::DecimalText(hash.digest.size() * 8) + u"-bit hash";
  return u"a " + std::u16string(swr::GetAlgo(hash.candidates.front()).name) + u" hash";
}

}  // namespace

void ClipboardWatch::Check() {
  const uint32_t sequence = clipboard_.ClipboardSequence();
  // From now on this content is not checked again, whatever the result.
  if (std::exchange(sequence_, sequence) == sequence) return;
  const std::optional<std::u16string> text = clipboard_.ReadClipboardText();
  if (!text) return;
  const std::optional<swr::ParsedHash> hash = swr::ParseClipboardHash(*text);
  if (!hash || *text == dismissed_) return;
  if (swr::TrimText(*text) == swr::TrimText(expected_.ExpectedText())) return;
  // Every other banner takes precedence.
  if (banners_.Kind() != BannerKind::None && banners_.Kind() != BannerKind::Clipboard) return;
  banners_.Show(BannerKind::Clipboard,
                u"The clipboard contains " + HashLabel(*hash) + u".  " +
                    LinkMarkup(AcceptLink, u"Compare") + u"    " +
                    LinkMarkup(DismissLink, u"Dismiss"),
                *text);
}

}  // namespace app
