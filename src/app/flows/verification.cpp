#include "app/flows/verification.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <utility>
#include <vector>

#include "app/flows/selection.h"
#include "app/intake/intake_run.h"
#include "app/screen/link_ids.h"
#include "swr/checksums/verdict_text.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"

namespace app {
namespace {

const std::vector<FileFilter>& ChecksumFileFilters() {
  static const std::vector<FileFilter> filters = {
      {u"Checksum files",
       u"*.sha256;*.sha1;*.md5;*.sha512;*.sha384;*.sfv;*.b3;*.blake3;*.xxh64;*.xxh3;*.xxh128;"
       u"*.sha3-256;*.sha3-384;*.sha3-512;*.digests;*SUMS;*SUMS.txt;*sums.txt;*.txt;*.asc"},
      {u"All files", u"*.*"}};
  return filters;
}

TaskDialogSpec CantBeRead(const std::u16string& path, uint32_t error) {
  return MessageDialog(TaskDialogIcon::Error, u"The checksum file can't be read.",
                       swr::EscapeForDisplay(path) + u"\n\n" + swr::FormatErrorText(error) + u".");
}

TaskDialogSpec NoChecksums(const std::u16string& path) {
  return MessageDialog(TaskDialogIcon::Warning, u"No checksums were found in this file.",
                       swr::EscapeForDisplay(path) +
                           u"\n\nChecksum files have lines like \"<hash>  <file name>\" or "
                           u"\"SHA256 (<file name>) = <hash>\".");
}

// Makes rows from the files that one checksum file lists.
class ListedFiles final : public FileReceiver {
 public:
  ListedFiles(RowTable& rows, Hashing& hashing, Banners& banners, ListView& list,
              const std::u16string& checksumFile, bool startsEmpty)
      : rows_(rows),
        hashing_(hashing),
        banners_(banners),
        list_(list),
        checksumFile_(checksumFile),
        startsEmpty_(startsEmpty) {}

  // A listed file replaces the rows of its path that have no expected digest.
  void Expect(const std::vector<std::u16string>& paths) override {
    for (const std::u16string& path : paths) {
      for (const size_t index : rows_.IndexesOfPath(path)) {
        if (!rows_[index].hasExpected) replaced_.insert(rows_[index].id);
      }
    }
  }

  void Take(std::span<IntakeFile> files, bool isCancelled) override {
    if (!firstNew_) Begin(isCancelled);
    const size_t before = rows_.Size();
    for (IntakeFile& file : files) {
      if (isCancelled) CancelNewRow(file.row);
      rows_.Append(std::move(file.row), startsEmpty_ && !file.mayRepeat);
    }
    isUpToDate_ = false;
    if (!isCancelled) hashing_.QueueFrom(before);
  }

  void OnRemoval(const std::vector<const Row*>&) override {}

  void Show() override {
    if (std::exchange(isUpToDate_, true)) return;
    const bool isFirst = !std::exchange(wasShown_, true);
    if (isFirst) list_.ClearSelection();
    list_.SetRowCount(rows_.Size());
    if (isFirst) list_.ScrollToRow(std::min(*firstNew_, rows_.Size() - 1));
  }

  std::optional<TaskDialogSpec> Finish(const IntakeEnd& end) override {
    if (end.readError) return CantBeRead(checksumFile_, *end.readError);
    if (!firstNew_) {
      return end.cancelled ? std::nullopt : std::optional(NoChecksums(checksumFile_));
    }
    if (!end.skippedLines.empty()) {
      banners_.Show(BannerKind::SkippedLines,
                    swr::SkippedLinesText(end.skippedLines.size(), end.skippedLines.front()) +
                        u".    " + LinkMarkup(DismissLink, u"Dismiss"),
                    {});
    }
    return std::nullopt;
  }

 private:
  // All replaced rows are removed before the first new one is appended.
  void Begin(bool isCancelled) {
    firstNew_ = rows_.Size();
    const RowIds replaced(replaced_.begin(), replaced_.end());
    if (!replaced.empty()) hashing_.RemoveRows(replaced);
    if (!isCancelled) hashing_.QueueAll();
  }

  RowTable& rows_;
  Hashing& hashing_;
  Banners& banners_;
  ListView& list_;
  const std::u16string checksumFile_;
  const bool startsEmpty_;  // the rows are only those of this file
  std::set<uint64_t> replaced_;
  std::optional<size_t> firstNew_;  // the number of rows before the first file arrived
  bool isUpToDate_ = true;
  bool wasShown_ = false;
};

}  // namespace

Verification::Verification(RowTable& rows, Hashing& hashing, Banners& banners,
                           FileArrivals& arrivals, ListView& list, Pickers& pickers)
    : rows_(rows),
      hashing_(hashing),
      banners_(banners),
      arrivals_(arrivals),
      list_(list),
      pickers_(pickers) {}

void Verification::VerifyFile(const std::u16string& path) {
  // The paths are needed to replace rows; without rows there is nothing to replace.
  const bool startsEmpty = rows_.IsEmpty() && !arrivals_.Open().Any();
  arrivals_.Start(
      ChecksumFileRequest{.path = path, .announcePaths = !startsEmpty},
      std::make_unique<ListedFiles>(rows_, hashing_, banners_, list_, path, startsEmpty));
}

void Verification::VerifyChosenFiles() {
  for (const std::u16string& path :
       pickers_.PickFiles(u"Verify Checksum File", ChecksumFileFilters())) {
    VerifyFile(path);
  }
}

}  // namespace app
