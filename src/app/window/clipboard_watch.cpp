// A hash that the user copied elsewhere is offered for comparing, when the window becomes active
// and once for each content of the clipboard. Nothing reaches the box unasked.
#include <utility>

#include "app/window/main_window.h"
#include "swr/text/decimal_text.h"
#include "swr/text/text.h"

namespace app {
namespace {

// "a SHA-256 hash", "a 256-bit hash".
std::u16string HashLabel(const swr::ParsedHash& hash) {
  if (!hash.explicitAlgo) return u"a " + swr::DecimalText(hash.digest.size() * 8) + u"-bit hash";
  return u"a " + std::u16string(swr::GetAlgo(hash.candidates.front()).name) + u" hash";
}

}  // namespace

void MainWindow::CheckClipboard() {
  const uint32_t sequence = desktop_.ClipboardSequence();
  // From here on this content is spent, whatever comes of it.
  if (std::exchange(clipboardSequence_, sequence) == sequence) return;
  const std::optional<std::u16string> text = desktop_.ReadClipboardText();
  if (!text) return;
  const std::optional<swr::ParsedHash> hash = swr::ParseClipboardHash(*text);
  if (!hash || *text == dismissedClipboard_) return;
  if (swr::TrimText(*text) == swr::TrimText(view_.ExpectedText())) return;
  // Every other banner is more urgent.
  if (bannerKind != BannerKind::None && bannerKind != BannerKind::Clipboard) return;
  ShowBanner(BannerKind::Clipboard,
             u"The clipboard contains " + HashLabel(*hash) +
                 u".  <a id=\"a\">Compare</a>    <a id=\"x\">Dismiss</a>",
             *text);
}

}  // namespace app
