// The reference model's rules other than those of rows and verdicts: sorting, lookups, the banner
// and the clipboard.
#include <algorithm>
#include <utility>

#include "swr/checksums/checksum_file.h"
#include "swr/system/text_services.h"
#include "swr/text/decimal_text.h"
#include "swr/text/display_text.h"
#include "swr/text/text.h"
#include "tests/support/reference_window.h"

namespace app::testing {

using swr::AlgoId;

std::u16string ReferenceWindow::Cell(const ReferenceFileRow& row,
                                     const std::u16string& heading) const {
  if (heading == u"Name") return row.name;
  if (heading == u"Folder") return row.folder;
  if (heading == u"Size") {
    return row.status == RowStatus::Failed ? u"" : swr::FormatSize(row.size);
  }
  if (heading == u"Status") return StatusCell(row);
  for (const auto& [id, bytes] : row.digests) {
    if (heading == swr::GetAlgo(id).name) return ReferenceHex(bytes, uppercase);
  }
  return {};
}

void ReferenceWindow::SortBy(const std::u16string& heading) {
  descending_ = sortHeading_ == heading && !descending_;
  sortHeading_ = heading;
  const auto isLess = [&](const ReferenceFileRow& a, const ReferenceFileRow& b) {
    if (heading == u"Size") return a.size < b.size;
    return swr::SystemCompareNatural(Cell(a, heading), Cell(b, heading)) < 0;
  };
  std::ranges::stable_sort(rows, [&](const ReferenceFileRow& a, const ReferenceFileRow& b) {
    return descending_ ? isLess(b, a) : isLess(a, b);
  });
  selection.clear();
  Widen(false);
  shownDetails = Details();
}

std::optional<std::u16string> ReferenceWindow::IdleStatus() const {
  if (IsActive()) return std::nullopt;
  if (rows.empty()) return intakes.empty() ? u"" : u"Looking up files...";
  uint64_t total = 0;
  for (const ReferenceFileRow& row : rows) total += row.size;
  const std::u16string files = swr::DecimalText(rows.size()) +
                               (rows.size() == 1 ? u" file, " : u" files, ") +
                               swr::FormatSize(total);
  return intakes.empty() ? files : u"Looking up files... " + files + u" so far";
}

// ---- Lookups.

void ReferenceWindow::LookUp() {
  if (selection.size() != 1) return;
  ReferenceFileRow& row = rows[*selection.begin()];
  if (row.status == RowStatus::Failed) return;
  if (row.digests.contains(AlgoId::Sha256)) {
    openedPage_ = row.digests.at(AlgoId::Sha256);
    return;
  }
  const ResultLine before = Line();
  lookedUp_ = row.id;
  if (Queue(row, {AlgoId::Sha256})) heldLine_ = before;
}

void ReferenceWindow::FinishLookUp(const ReferenceFileRow& row) {
  const bool isBusy = row.status == RowStatus::Waiting || row.status == RowStatus::Hashing;
  if (row.id != lookedUp_ || isBusy) return;
  lookedUp_.reset();
  if (row.digests.contains(AlgoId::Sha256)) openedPage_ = row.digests.at(AlgoId::Sha256);
}

std::optional<DigestBytes> ReferenceWindow::TakeOpenedPage() {
  return std::exchange(openedPage_, std::nullopt);
}

// ---- The banner and the clipboard.

void ReferenceWindow::ShowBanner(ReferenceBanner kind, const std::u16string& text) {
  banner = kind;
  bannerText_ = text;
}

void ReferenceWindow::HideBanner() { banner = ReferenceBanner::None; }

std::optional<std::u16string> ReferenceWindow::BannerText() const {
  if (banner == ReferenceBanner::None) return std::nullopt;
  return bannerText_;
}

void ReferenceWindow::OfferToVerify(const ReferenceFileRow& row) {
  if (!swr::IsChecksumFileName(row.path)) return;
  ShowBanner(ReferenceBanner::ChecksumFileOffer,
             u"This looks like a checksum file. <a id=\"a\">Verify the files it lists</a>    "
             u"<a id=\"x\">Dismiss</a>");
  offeredFile = row.path;
}

void ReferenceWindow::ReportSkippedLines(const std::vector<uint32_t>& lines) {
  ShowBanner(ReferenceBanner::SkippedLines,
             swr::DecimalText(lines.size()) + (lines.size() == 1 ? u" line" : u" lines") +
                 u" of the checksum file aren't checksums and were skipped (first: line " +
                 swr::DecimalText(lines.front()) + u").    <a id=\"x\">Dismiss</a>");
}

void ReferenceWindow::FindStaleEntry() {
  entry = ReferenceEntry::MissingCopy;
  ShowBanner(
      ReferenceBanner::StaleEntries,
      u"The Explorer menu entries point at a copy of Sumwright that no longer exists.  "
      u"<a id=\"a\">Use this copy</a>    <a id=\"r\">Remove them</a>    <a id=\"x\">Dismiss</a>");
}

void ReferenceWindow::Copy(ReferenceCopy copied) {
  copied_ = std::move(copied);
  isCopyNew_ = true;
}

// A short value could be anything, so it is not offered.
void ReferenceWindow::Activate() {
  if (!std::exchange(isCopyNew_, false)) return;
  const std::optional<ReferenceClaim>& claim = copied_->box.claim;
  if (!claim || claim->bytes.size() < 16) return;
  if (copied_->text == dismissed_) return;
  if (swr::TrimText(copied_->text) == swr::TrimText(box.text)) return;
  if (banner != ReferenceBanner::None && banner != ReferenceBanner::Clipboard) return;
  const std::u16string label = claim->isNamed
                                   ? std::u16string(swr::GetAlgo(claim->algos.front()).name)
                                   : swr::DecimalText(claim->bytes.size() * 8) + u"-bit";
  ShowBanner(ReferenceBanner::Clipboard,
             u"The clipboard contains a " + label +
                 u" hash.  <a id=\"a\">Compare</a>    <a id=\"x\">Dismiss</a>");
  offeredCopy_ = *copied_;
}

void ReferenceWindow::Paste() {
  if (!copied_) return;
  EditBox(copied_->box);
  HideBanner();
}

void ReferenceWindow::FollowBannerLink(const std::u16string& link) {
  const ReferenceBanner followed = banner;
  HideBanner();
  if (link == u"x") {
    if (followed == ReferenceBanner::Clipboard) dismissed_ = offeredCopy_.text;
    return;
  }
  if (followed == ReferenceBanner::Clipboard) EditBox(offeredCopy_.box);
  if (followed == ReferenceBanner::ChecksumFileOffer) RemovePlainRow(offeredFile);
  if (followed == ReferenceBanner::StaleEntries && entry == ReferenceEntry::MissingCopy) {
    entry = link == u"a" ? ReferenceEntry::ThisCopy : ReferenceEntry::None;
  }
}

// The first row of this path that has no expected digest from a checksum file.
void ReferenceWindow::RemovePlainRow(const std::u16string& path) {
  const auto found = std::ranges::find_if(rows, [&](const ReferenceFileRow& row) {
    return !row.listed && swr::EqualsNoCase(row.path, path);
  });
  if (found != rows.end()) {
    DropJobsOf(found->id);
    RememberRemoved(*found);
    rows.erase(found);
  }
  selection.clear();
  Widen(false);
  shownDetails = Details();
}

}  // namespace app::testing
