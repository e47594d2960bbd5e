// Verification: a checksum file becomes rows that know what their digests should be. The verdicts
// then follow from the rows like any others.
#include <algorithm>
#include <utility>

#include "app/window/main_window.h"
#include "swr/checksums/checksum_file.h"
#include "swr/checksums/listed_path.h"
#include "swr/text/decimal_text.h"
#include "swr/text/display_text.h"
#include "swr/text/text_file.h"

namespace app {
namespace {

std::u16string SkippedLinesText(const std::vector<uint32_t>& skipped) {
  return swr::DecimalText(skipped.size()) + (skipped.size() == 1 ? u" line" : u" lines") +
         u" of the checksum file aren't checksums and were skipped (first: line " +
         swr::DecimalText(skipped.front()) + u").    <a id=\"x\">Dismiss</a>";
}

}  // namespace

void MainWindow::VerifyChecksumFile(const std::u16string& path) {
  uint32_t error = 0;
  const std::optional<std::u16string> text = swr::ReadTextFile(path, &error);
  if (!text) {
    desktop_.ShowTaskDialog(MessageDialog(TaskDialogIcon::Error,
                                          u"The checksum file can't be read.",
                                          path + u"\n\n" + swr::FormatErrorText(error) + u"."));
    return;
  }
  swr::ChecksumSet set = swr::ParseChecksumText(*text, path);
  if (set.lines.empty()) {
    desktop_.ShowTaskDialog(
        MessageDialog(TaskDialogIcon::Warning, u"No checksums were found in this file.",
                      path + u"\n\nChecksum files have lines like \"<hash>  <file name>\" or "
                             u"\"SHA256 (<file name>) = <hash>\"."));
    return;
  }

  const size_t firstNew = rows.size();
  AddListedFiles(set.lines, path);
  RebuildRowIndex();
  QueueAllRows();
  view_.ClearSelection();
  view_.SetRowCount(rows.size());
  view_.ScrollToRow(std::min(firstNew, rows.size() - 1));
  if (!set.skippedLines.empty()) {
    ShowBanner(BannerKind::SkippedLines, SkippedLinesText(set.skippedLines), {});
  }
  RefreshVerdicts();
}

// A listed file replaces the rows of its path that nothing is expected of yet.
void MainWindow::AddListedFiles(std::vector<swr::ChecksumLine>& lines,
                                const std::u16string& checksumFile) {
  std::vector<uint64_t> replaced;
  RowList added;
  added.reserve(lines.size());
  for (swr::ChecksumLine& line : lines) {
    std::unique_ptr<ListRow> row = MakeRow(swr::ResolveListedPath(checksumFile, line.name));
    row->hasExpected = true;
    row->expectedBytes = std::move(line.digest);
    row->expectedAlgos = std::move(line.candidates);
    row->checksumFile = checksumFile;
    row->checksumLine = line.lineNumber;
    paths_.Find(row->path, [&](size_t i) {
      if (rows[i]->hasExpected) return;
      replaced.push_back(rows[i]->id);
      rows[i].reset();
    });
    added.push_back(std::move(row));
  }
  queue_.Remove(replaced);
  std::erase(rows, nullptr);
  std::ranges::move(added, std::back_inserter(rows));
}

}  // namespace app
