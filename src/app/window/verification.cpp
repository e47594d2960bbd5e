// Verification: a checksum file becomes rows that know what their digests should be. The verdicts
// then follow from the rows like any others.
#include <algorithm>
#include <utility>

#include "app/window/main_window.h"
#include "app/window/new_rows.h"
#include "swr/checksums/checksum_file.h"
#include "swr/checksums/listed_path.h"
#include "swr/checksums/verdict_text.h"
#include "swr/system/full_path.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"
#include "swr/text/text_file.h"

namespace app {

void MainWindow::VerifyChecksumFile(const std::u16string& path) {
  uint32_t error = 0;
  const std::optional<std::u16string> text = swr::ReadTextFile(path, &error);
  if (!text) {
    desktop_.ShowTaskDialog(
        MessageDialog(TaskDialogIcon::Error, u"The checksum file can't be read.",
                      swr::EscapeForDisplay(path) + u"\n\n" + swr::FormatErrorText(error) + u"."));
    return;
  }
  swr::ChecksumTextReader reader(*text, path);
  std::optional<swr::ChecksumLine> line = reader.Next();
  if (!line) {
    desktop_.ShowTaskDialog(
        MessageDialog(TaskDialogIcon::Warning, u"No checksums were found in this file.",
                      swr::EscapeForDisplay(path) +
                          u"\n\nChecksum files have lines like \"<hash>  <file name>\" or "
                          u"\"SHA256 (<file name>) = <hash>\"."));
    return;
  }

  const size_t firstNew = rows.size();
  if (!rows.empty()) {
    RemoveRowsListedIn(swr::ParseChecksumText(*text, path).lines, path);
    QueueAllRows();
  }
  NewRows newRows(*this);
  for (; line; line = reader.Next()) {
    std::unique_ptr<ListRow> row = MakeRow(swr::ResolveListedPath(path, line->name));
    row->hasExpected = true;
    row->expectedBytes = std::move(line->digest);
    row->expectedAlgos = std::move(line->candidates);
    row->checksumFile = path;
    row->checksumLine = line->lineNumber;
    newRows.Add(std::move(row));
  }
  newRows.Finish();
  view_.ClearSelection();
  view_.SetRowCount(rows.size());
  view_.ScrollToRow(std::min(firstNew, rows.size() - 1));
  if (!reader.SkippedLines().empty()) {
    const std::vector<uint32_t>& skipped = reader.SkippedLines();
    ShowBanner(
        BannerKind::SkippedLines,
        swr::SkippedLinesText(skipped.size(), skipped.front()) + u".    <a id=\"x\">Dismiss</a>",
        {});
  }
  RefreshVerdicts();
}

// A listed file replaces the rows of its path that nothing is expected of yet.
void MainWindow::RemoveRowsListedIn(const std::vector<swr::ChecksumLine>& lines,
                                    const std::u16string& checksumFile) {
  std::vector<uint64_t> replaced;
  for (const swr::ChecksumLine& line : lines) {
    const std::u16string path = swr::ResolveListedPath(checksumFile, line.name);
    paths_.Find(swr::SystemFullPath(path).value_or(path), [&](size_t i) {
      if (rows[i]->hasExpected) return;
      replaced.push_back(rows[i]->id);
      rows[i].reset();
    });
  }
  queue_.Remove(replaced);
  std::erase(rows, nullptr);
  RebuildRowIndex();
}

}  // namespace app
