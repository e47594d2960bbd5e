// The one door into the list: start-up arguments, drops and the Add commands all come through here.
#include <algorithm>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "app/window/main_window.h"
#include "swr/checksums/checksum_file.h"
#include "swr/paths/folder_walk.h"
#include "swr/paths/path_forms.h"
#include "swr/system/file.h"

namespace app {
namespace {

// Shows the wait cursor while it lives.
class WaitCursor {
 public:
  explicit WaitCursor(Desktop& desktop) : desktop_(desktop) { desktop_.BeginWait(); }
  ~WaitCursor() { desktop_.EndWait(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;

 private:
  Desktop& desktop_;
};

// Waking the worker costs more than a small file does.
constexpr size_t RowsQueuedAtOnce = 64;

// The identity of the files in the list: their paths, in which the case of A to Z does not count.
class KnownPaths {
 public:
  explicit KnownPaths(size_t count) { known_.reserve(2 * count + 1024); }

  bool Has(const std::u16string& path) const { return known_.contains(path); }
  // A row's own path, which lives as long as this object.
  void Add(const std::u16string& rowPath) { known_.insert(rowPath); }
  // A path that the walk came by, and that of the row that was made of it.
  void AddWalked(const std::u16string& walked, const std::u16string& rowPath) {
    known_.insert(walked == rowPath ? rowPath : others_.emplace_back(walked));
  }

 private:
  static char16_t Lower(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
  }

  // FNV-1a, over code units.
  struct Hash {
    size_t operator()(std::u16string_view path) const {
      uint64_t hash = 0xCBF29CE484222325;
      for (const char16_t unit : path) hash = (hash ^ Lower(unit)) * 0x100000001B3;
      return static_cast<size_t>(hash ^ hash >> 32);
    }
  };
  struct Equal {
    bool operator()(std::u16string_view a, std::u16string_view b) const {
      return std::ranges::equal(a, b, {}, Lower, Lower);
    }
  };

  std::deque<std::u16string> others_;  // what the views of paths that are no row's own look at
  std::unordered_set<std::u16string_view, Hash, Equal> known_;
};

}  // namespace

std::unique_ptr<ListRow> MainWindow::MakeRow(const std::u16string& path) {
  auto row = std::make_unique<ListRow>();
  row->id = nextRowId_++;
  row->path = swr::SystemFullPath(path).value_or(path);
  const swr::PathParts parts = swr::SplitPath(row->path);
  row->name = parts.name;
  row->folder = parts.folder;
  if (const auto facts = swr::QueryFacts(swr::ToLongPath(row->path), row->error)) {
    row->size = facts->size;
    row->modified = facts->modified;
  } else {
    row->status = RowStatus::Failed;
  }
  return row;
}

void MainWindow::AddPaths(const std::vector<std::u16string>& paths) {
  std::u16string checksumCandidate;
  {
    const WaitCursor wait(desktop_);
    const size_t firstNew = rows.size();
    KnownPaths known(rows.size());
    for (const auto& row : rows) known.Add(row->path);
    // The worker begins with the first files while the last are still looked for.
    size_t queued = firstNew;
    const auto queueNewRows = [&] {
      for (; queued < rows.size(); ++queued) QueueRow(*rows[queued], algorithms);
    };

    for (const std::u16string& path : paths) {
      if (swr::IsDirectoryPath(path)) {
        const swr::WalkOptions options{
            .recursive = true, .includeHidden = includeHidden, .withSizes = false};
        swr::WalkFolder(path, options, [&](const swr::FoundFile& found) {
          // By the path as it was walked, so that a file that is there already costs no look at the
          // file system.
          if (known.Has(found.path)) return;
          rows.push_back(MakeRow(found.path));
          known.AddWalked(found.path, rows.back()->path);
          if (rows.size() - queued == RowsQueuedAtOnce) queueNewRows();
        });
      } else {
        std::unique_ptr<ListRow> row = MakeRow(path);
        if (known.Has(row->path)) continue;
        known.Add(row->path);
        if (paths.size() == 1 && swr::IsChecksumFileName(row->path)) checksumCandidate = row->path;
        rows.push_back(std::move(row));
      }
    }
    queueNewRows();
    IndexAddedRows();
    view_.SetRowCount(rows.size());
    if (rows.size() > firstNew) {
      view_.ClearSelection();
      view_.SelectRow(firstNew);
    }
    if (!checksumCandidate.empty()) {
      ShowBanner(BannerKind::ChecksumFileOffer,
                 u"This looks like a checksum file. <a id=\"a\">Verify the files it lists</a>    "
                 u"<a id=\"x\">Dismiss</a>",
                 checksumCandidate);
    }
  }
  RefreshVerdicts();
}

}  // namespace app
