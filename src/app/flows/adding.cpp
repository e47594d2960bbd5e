#include "app/flows/adding.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "app/flows/new_rows.h"
#include "app/rows/new_row.h"
#include "app/screen/link_ids.h"
#include "swr/checksums/checksum_file.h"
#include "swr/paths/folder_walk.h"
#include "swr/paths/path_forms.h"
#include "swr/text/text.h"

namespace app {
namespace {

// Shows the wait cursor while it lives.
class WaitCursor {
 public:
  explicit WaitCursor(Frame& frame) : frame_(frame) { frame_.BeginWait(); }
  ~WaitCursor() { frame_.EndWait(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;

 private:
  Frame& frame_;
};

// Which files are in the list already: by their paths, in which only A to Z match in either case. A
// file found by a walk is known by the path that the walk gave it, and that alone.
class KnownFiles {
 public:
  explicit KnownFiles(const RowTable& rows) : rows_(rows) {}

  bool Has(const std::u16string& path) const {
    const auto isPathOf = [&](size_t index) {
      const Row& row = rows_[index];
      return !walkedOtherwise_.contains(row.id) &&
             swr::ToLowerText(row.Path()) == swr::ToLowerText(path);
    };
    return std::ranges::any_of(rows_.IndexesOfPath(path), isPathOf) ||
           (!walkedPaths_.empty() && walkedPaths_.contains(swr::ToLowerText(path)));
  }

  // The row was made from this path of a walk.
  void AddWalked(const std::u16string& walked, const Row& row) {
    if (walked == row.Path()) return;
    walkedPaths_.insert(swr::ToLowerText(walked));
    walkedOtherwise_.insert(row.id);
  }

 private:
  const RowTable& rows_;
  std::unordered_set<std::u16string> walkedPaths_;
  std::unordered_set<uint64_t> walkedOtherwise_;
};

}  // namespace

Adding::Adding(RowTable& rows, Hashing& hashing, const Options& options, Banners& banners,
               Refresh& refresh, ListView& list, Frame& frame, Pickers& pickers)
    : rows_(rows),
      hashing_(hashing),
      options_(options),
      banners_(banners),
      refresh_(refresh),
      list_(list),
      frame_(frame),
      pickers_(pickers) {}

void Adding::AddPaths(const std::vector<std::u16string>& paths) {
  {
    const WaitCursor wait(frame_);
    std::u16string checksumCandidate;
    const size_t firstNew = rows_.Size();
    KnownFiles known(rows_);
    NewRows newRows(rows_, hashing_);

    for (const std::u16string& path : paths) {
      if (swr::IsDirectoryPath(path)) {
        const swr::WalkOptions walk{
            .recursive = true, .includeHidden = options_.includeHidden, .withSizes = false};
        swr::WalkFolder(path, walk, [&](const swr::FoundFile& found) {
          // By the path as it was walked, so that the file system is not asked about a file that is
          // there already.
          if (known.Has(found.path)) return;
          known.AddWalked(found.path, newRows.Append(NewRow(found.path)));
        });
      } else {
        Row row = NewRow(path);
        if (known.Has(row.Path())) {
          rows_.SkipId();
          continue;
        }
        if (paths.size() == 1 && swr::IsChecksumFileName(row.Path()))
          checksumCandidate = row.Path();
        newRows.Append(std::move(row));
      }
    }
    newRows.Finish();
    list_.SetRowCount(rows_.Size());
    if (rows_.Size() > firstNew) {
      list_.ClearSelection();
      list_.SelectRow(firstNew);
    }
    if (!checksumCandidate.empty()) {
      banners_.Show(BannerKind::ChecksumFileOffer,
                    u"This looks like a checksum file. " +
                        LinkMarkup(AcceptLink, u"Verify the files it lists") + u"    " +
                        LinkMarkup(DismissLink, u"Dismiss"),
                    checksumCandidate);
    }
  }
  refresh_.AfterRowChange();
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
