// The one door into the list: start-up arguments, drops and the Add commands all come through here.
#include <string>
#include <unordered_set>
#include <utility>

#include "app/window/main_window.h"
#include "swr/checksums/checksum_file.h"
#include "swr/paths/folder_walk.h"
#include "swr/paths/path_forms.h"
#include "swr/system/file.h"
#include "swr/text/text.h"

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
    // Lower-cased paths: the identity of a file in the list.
    std::unordered_set<std::u16string> seen;
    for (const auto& row : rows) seen.insert(swr::ToLowerText(row->path));

    for (const std::u16string& path : paths) {
      if (swr::IsDirectoryPath(path)) {
        const swr::WalkOptions options{.recursive = true, .includeHidden = includeHidden};
        swr::WalkFolder(path, options, [&](const swr::FoundFile& found) {
          // By the path as it was walked, so that a file that is there already costs no look at the
          // file system.
          if (seen.insert(swr::ToLowerText(found.path)).second) rows.push_back(MakeRow(found.path));
        });
      } else {
        std::unique_ptr<ListRow> row = MakeRow(path);
        if (!seen.insert(swr::ToLowerText(row->path)).second) continue;
        if (paths.size() == 1 && swr::IsChecksumFileName(row->path)) checksumCandidate = row->path;
        rows.push_back(std::move(row));
      }
    }

    IndexAddedRows();
    for (size_t i = firstNew; i < rows.size(); ++i) QueueRow(*rows[i], algorithms);
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
