// The one door into the list: start-up arguments, drops and the Add commands all come through here.
#include <algorithm>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/window/main_window.h"
#include "app/window/new_rows.h"
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

// The identity of the files in the list: their paths, in which the case of A to Z does not count. A
// table with open addressing: a walk asks it for each file, and where a set of the standard library
// goes to memory several times for that, this goes once.
class KnownPaths {
 public:
  bool Has(const std::u16string& path) const {
    return places_[PlaceOf(path, HashOf(path))].path != nullptr;
  }
  // The path of a row, which outlives this object.
  void Add(const std::u16string& path) {
    if (2 * ++count_ > places_.size()) Grow();
    const size_t hash = HashOf(path);
    places_[PlaceOf(path, hash)] = {hash, &path};
  }
  // A path that the walk came by, and that of the row that was made of it.
  void AddWalked(const std::u16string& walked, const std::u16string& rowPath) {
    Add(walked == rowPath ? rowPath : others_.emplace_back(walked));
  }

 private:
  struct Place {
    size_t hash = 0;
    const std::u16string* path = nullptr;
  };

  static char16_t Lower(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
  }
  // FNV-1a, over code units.
  static size_t HashOf(std::u16string_view path) {
    uint64_t hash = 0xCBF29CE484222325;
    for (const char16_t unit : path) hash = (hash ^ Lower(unit)) * 0x100000001B3;
    return static_cast<size_t>(hash ^ hash >> 32);
  }
  size_t NextPlace(size_t place) const { return (place + 1) & (places_.size() - 1); }
  // Where the path stands, or the empty place where it would.
  size_t PlaceOf(std::u16string_view path, size_t hash) const {
    size_t place = hash & (places_.size() - 1);
    while (places_[place].path != nullptr) {
      const bool isSame = places_[place].hash == hash &&
                          std::ranges::equal(*places_[place].path, path, {}, Lower, Lower);
      if (isSame) break;
      place = NextPlace(place);
    }
    return place;
  }
  void Grow() {
    std::vector<Place> old(2 * places_.size());
    old.swap(places_);
    for (const Place& kept : old) {
      if (kept.path == nullptr) continue;
      size_t place = kept.hash & (places_.size() - 1);
      while (places_[place].path != nullptr) place = NextPlace(place);
      places_[place] = kept;
    }
  }

  std::vector<Place> places_ = std::vector<Place>(1024);  // a power of two, half of them empty
  size_t count_ = 0;
  std::deque<std::u16string> others_;  // the paths that are no row's own
};

}  // namespace

std::unique_ptr<ListRow> MainWindow::MakeRow(const std::u16string& path) {
  auto row = std::make_unique<ListRow>();
  row->id = nextRowId_++;
  row->path = swr::SystemFullPath(path).value_or(path);
  const swr::PathParts parts = swr::SplitPath(row->path);
  row->name = parts.name;
  row->folder = parts.folder;
  if (const auto info = swr::QueryFileInfo(swr::ToLongPath(row->path), row->error)) {
    row->size = info->size;
    row->modified = info->modified;
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
    KnownPaths known;
    for (const auto& row : rows) known.Add(row->path);
    NewRows newRows(*this);

    for (const std::u16string& path : paths) {
      if (swr::IsDirectoryPath(path)) {
        const swr::WalkOptions options{
            .recursive = true, .includeHidden = includeHidden, .withSizes = false};
        swr::WalkFolder(path, options, [&](const swr::FoundFile& found) {
          // By the path as it was walked, so that a file that is there already costs no look at the
          // file system.
          if (known.Has(found.path)) return;
          known.AddWalked(found.path, newRows.Add(MakeRow(found.path)).path);
        });
      } else {
        std::unique_ptr<ListRow> row = MakeRow(path);
        if (known.Has(row->path)) continue;
        known.Add(row->path);
        if (paths.size() == 1 && swr::IsChecksumFileName(row->path)) checksumCandidate = row->path;
        newRows.Add(std::move(row));
      }
    }
    newRows.Finish();
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
