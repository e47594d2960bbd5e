// The banner: one line above the list that offers something and never blocks.
#include <algorithm>
#include <array>
#include <utility>

#include "app/window/main_window.h"
#include "swr/text/text.h"

namespace app {

void MainWindow::ShowBanner(BannerKind kind, const std::u16string& markup,
                            const std::u16string& payload) {
  bannerKind = kind;
  bannerPayload = payload;
  view_.ShowBanner(markup);
}

void MainWindow::HideBanner() {
  if (bannerKind == BannerKind::None) return;
  bannerKind = BannerKind::None;
  bannerPayload.clear();
  view_.HideBanner();
}

void MainWindow::OnBannerLink(std::u16string_view link) {
  // What was offered is gone with the banner, which goes first.
  const BannerKind kind = bannerKind;
  const std::u16string payload = bannerPayload;
  HideBanner();
  if (link == u"x") {
    if (kind == BannerKind::Clipboard) dismissedClipboard_ = payload;
    return;
  }
  switch (kind) {
    case BannerKind::Clipboard:
      view_.SetExpectedText(std::u16string(swr::TrimText(payload)));
      break;
    case BannerKind::ChecksumFileOffer:
      ForgetPlainRow(payload);
      VerifyChecksumFile(payload);
      break;
    case BannerKind::StaleExplorer:
      RepairStaleEntries(link == u"a");
      break;
    case BannerKind::SkippedLines:
    case BannerKind::None:
      break;
  }
}

// A checksum file that was dropped stands in the list like any file. Once it is used as what it is,
// its own row has no more business there.
void MainWindow::ForgetPlainRow(const std::u16string& path) {
  const auto found = std::ranges::find_if(rows, [&](const auto& row) {
    return !row->hasExpected && swr::EqualsNoCase(row->path, path);
  });
  if (found != rows.end()) {
    queue_.Remove(std::array{(*found)->id});
    rows.erase(found);
  }
  RebuildRowIndex();
  view_.ClearSelection();
  view_.SetRowCount(rows.size());
  // The file may turn out to be of no use; then nothing else follows.
  RefreshVerdicts();
}

}  // namespace app
