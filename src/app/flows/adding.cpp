#include "app/flows/adding.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <unordered_set>
#include <utility>

#include "app/intake/intake_run.h"
#include "app/screen/link_ids.h"
#include "swr/checksums/checksum_file.h"
#include "swr/text/text.h"

namespace app {
namespace {

// The files that are in the list already, by path; case is ignored for A to Z only. A file found by
// a walk is known only by the path that the walk gave it.
class KnownFiles {
 public:
  explicit KnownFiles(const RowTable& rows) : rows_(rows) {}

  bool Has(const std::u16string& path) const {
    const auto isPathOf = [&](size_t index) {
      const Row& row = rows_[index];
      return !walkedUnderOtherPath_.contains(row.id) &&
             swr::ToLowerText(row.Path()) == swr::ToLowerText(path);
    };
    return std::ranges::any_of(rows_.IndexesOfPath(path), isPathOf) ||
           (!otherPaths_.empty() && otherPaths_.contains(swr::ToLowerText(path)));
  }

  // The row was made from a file that the walk found under this path, which is not the row's path.
  void AddWalked(const std::u16string& walked, const Row& row) {
    otherPaths_.insert(swr::ToLowerText(walked));
    walkedUnderOtherPath_.insert(row.id);
  }

  // The row is being removed, but its file stays known.
  void KeepRemoved(const Row& row) {
    if (!walkedUnderOtherPath_.contains(row.id)) otherPaths_.insert(swr::ToLowerText(row.Path()));
  }

 private:
  const RowTable& rows_;
  // In lower case: paths of walks that differ from those of their rows, and paths of rows that were
  // removed.
  std::unordered_set<std::u16string> otherPaths_;
  std::unordered_set<uint64_t> walkedUnderOtherPath_;
};

// Makes rows from the files of one call of AddPaths.
class AddedFiles final : public FileReceiver {
 public:
  AddedFiles(RowTable& rows, Hashing& hashing, Banners& banners, ListView& list, bool isSinglePath,
             bool startsEmpty)
      : rows_(rows),
        hashing_(hashing),
        banners_(banners),
        list_(list),
        isSinglePath_(isSinglePath),
        startsEmpty_(startsEmpty),
        known_(rows) {}

  void Expect(const std::vector<std::u16string>&) override {}

  void Take(std::span<IntakeFile> files, bool isCancelled) override {
    const size_t before = rows_.Size();
    for (IntakeFile& file : files) Add(file, isCancelled);
    if (rows_.Size() == before) return;
    if (!firstNew_) firstNew_ = before;
    isUpToDate_ = false;
    if (!isCancelled) hashing_.QueueFrom(before);
  }

  void OnRemoval(const std::vector<const Row*>& rows) override {
    for (const Row* row : rows) known_.KeepRemoved(*row);
  }

  void Show() override {
    if (std::exchange(isUpToDate_, true)) return;
    list_.SetRowCount(rows_.Size());
    if (std::exchange(wasShown_, true)) return;
    list_.ClearSelection();
    list_.SelectRow(*firstNew_);
  }

  std::optional<TaskDialogSpec> Finish(const IntakeEnd&) override {
    if (!checksumCandidate_.empty()) {
      banners_.Show(BannerKind::ChecksumFileOffer,
                    u"This looks like a checksum file. " +
                        LinkMarkup(AcceptLink, u"Verify the files it lists") + u"    " +
                        LinkMarkup(DismissLink, u"Dismiss"),
                    checksumCandidate_);
    }
    return std::nullopt;
  }

 private:
  void Add(IntakeFile& file, bool isCancelled) {
    const bool isNewPath = startsEmpty_ && !file.mayRepeat;
    if (!isNewPath && known_.Has(file.walkedPath.empty() ? file.row.Path() : file.walkedPath)) {
      if (!file.isWalked) rows_.SkipId();
      return;
    }
    if (isCancelled) CancelNewRow(file.row);
    const Row& row = rows_.Append(std::move(file.row), isNewPath);
    if (!file.walkedPath.empty()) known_.AddWalked(file.walkedPath, row);
    if (!file.isWalked && isSinglePath_ && swr::IsChecksumFileName(row.Path())) {
      checksumCandidate_ = row.Path();
    }
  }

  RowTable& rows_;
  Hashing& hashing_;
  Banners& banners_;
  ListView& list_;
  const bool isSinglePath_;
  const bool startsEmpty_;  // the rows are only those of this call
  KnownFiles known_;
  std::optional<size_t> firstNew_;  // the number of rows before the first one arrived
  bool isUpToDate_ = true;
  bool wasShown_ = false;
  std::u16string checksumCandidate_;
};

}  // namespace

Adding::Adding(RowTable& rows, Hashing& hashing, const Options& options, Banners& banners,
               FileArrivals& arrivals, ListView& list, Pickers& pickers)
    : rows_(rows),
      hashing_(hashing),
      options_(options),
      banners_(banners),
      arrivals_(arrivals),
      list_(list),
      pickers_(pickers) {}

void Adding::AddPaths(const std::vector<std::u16string>& paths) {
  const bool startsEmpty = rows_.IsEmpty() && !arrivals_.Open().Any();
  arrivals_.Start(PathsRequest{.paths = paths, .includeHidden = options_.includeHidden},
                  std::make_unique<AddedFiles>(rows_, hashing_, banners_, list_, paths.size() == 1,
                                               startsEmpty));
}

void Adding::AddChosenFiles() {
  const std::vector<std::u16string> paths = pickers_.PickFiles(u"Add Files", {});
  if (!paths.empty()) AddPaths(paths);
}

void Adding::AddChosenFolder() {
  const std::vector<std::u16string> paths = pickers_.PickFolder(u"Add Folder");
  if (!paths.empty()) AddPaths(paths);
}

}  // namespace app
