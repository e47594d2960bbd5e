#include "app/flows/banner_links.h"

#include <string>

#include "app/screen/link_ids.h"
#include "swr/text/text.h"

namespace app {

BannerLinks::BannerLinks(Banners& banners, ClipboardWatch& clipboard, ListEdits& edits,
                         Verification& verification, ShellEntries& shellEntries,
                         ExpectedView& expected)
    : banners_(banners),
      clipboard_(clipboard),
      edits_(edits),
      verification_(verification),
      shellEntries_(shellEntries),
      expected_(expected) {}

void BannerLinks::Follow(std::u16string_view link) {
  // Hiding the banner clears its kind and payload, so they are copied first.
  const BannerKind kind = banners_.Kind();
  const std::u16string payload = banners_.Payload();
  banners_.Hide();
  if (link == DismissLink) {
    if (kind == BannerKind::Clipboard) clipboard_.Dismiss(payload);
    return;
  }
  switch (kind) {
    case BannerKind::Clipboard:
      expected_.SetExpectedText(std::u16string(swr::TrimText(payload)));
      break;
    case BannerKind::ChecksumFileOffer:
      edits_.RemovePlainRow(payload);
      verification_.VerifyFile(payload);
      break;
    case BannerKind::StaleExplorer:
      shellEntries_.Repair(link == AcceptLink);
      break;
    case BannerKind::SkippedLines:
    case BannerKind::None:
      break;
  }
}

}  // namespace app
