#include "app/flows/verification.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "app/flows/new_rows.h"
#include "app/flows/selection.h"
#include "app/rows/new_row.h"
#include "app/screen/link_ids.h"
#include "swr/checksums/checksum_file.h"
#include "swr/checksums/listed_path.h"
#include "swr/checksums/verdict_text.h"
#include "swr/system/full_path.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"
#include "swr/text/text_file.h"

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

Row RowOf(swr::ChecksumLine line, const std::u16string& checksumFile) {
  Row row = NewRow(swr::ResolveListedPath(checksumFile, line.name));
  row.hasExpected = true;
  RowExtras& extras = row.extras.Make();
  extras.expectedBytes = std::move(line.digest);
  extras.expectedAlgos = std::move(line.candidates);
  extras.checksumFile = checksumFile;
  extras.checksumLine = line.lineNumber;
  return row;
}

}  // namespace

Verification::Verification(RowTable& rows, Hashing& hashing, Banners& banners, Refresh& refresh,
                           ListView& list, Messages& messages, Pickers& pickers)
    : rows_(rows),
      hashing_(hashing),
      banners_(banners),
      refresh_(refresh),
      list_(list),
      messages_(messages),
      pickers_(pickers) {}

void Verification::VerifyFile(const std::u16string& path) {
  uint32_t error = 0;
  const std::optional<std::u16string> text = swr::ReadTextFile(path, &error);
  if (!text) {
    messages_.ShowTaskDialog(CantBeRead(path, error));
    return;
  }
  swr::ChecksumSet listed = swr::ParseChecksumText(*text, path);
  if (listed.lines.empty()) {
    messages_.ShowTaskDialog(NoChecksums(path));
    return;
  }

  const size_t firstNew = rows_.Size();
  if (!rows_.IsEmpty()) {
    ReplaceRowsListedIn(listed.lines, path);
    hashing_.QueueAll();
  }
  NewRows newRows(rows_, hashing_);
  for (swr::ChecksumLine& line : listed.lines) newRows.Append(RowOf(std::move(line), path));
  newRows.Finish();
  list_.ClearSelection();
  list_.SetRowCount(rows_.Size());
  list_.ScrollToRow(std::min(firstNew, rows_.Size() - 1));
  if (!listed.skippedLines.empty()) {
    const std::vector<uint32_t>& skipped = listed.skippedLines;
    banners_.Show(BannerKind::SkippedLines,
                  swr::SkippedLinesText(skipped.size(), skipped.front()) + u".    " +
                      LinkMarkup(DismissLink, u"Dismiss"),
                  {});
  }
  refresh_.AfterRowChange();
}

void Verification::VerifyChosenFiles() {
  for (const std::u16string& path :
       pickers_.PickFiles(u"Verify Checksum File", ChecksumFileFilters())) {
    VerifyFile(path);
  }
}

// A listed file replaces the rows of its path that no checksum file expects anything of.
void Verification::ReplaceRowsListedIn(const std::vector<swr::ChecksumLine>& lines,
                                       const std::u16string& checksumFile) {
  RowIds replaced;
  std::vector<bool> isReplaced(rows_.Size());
  for (const swr::ChecksumLine& line : lines) {
    const std::u16string path = swr::ResolveListedPath(checksumFile, line.name);
    for (const size_t index : rows_.IndexesOfPath(swr::SystemFullPath(path).value_or(path))) {
      if (rows_[index].hasExpected || isReplaced[index]) continue;
      isReplaced[index] = true;
      replaced.push_back(rows_[index].id);
    }
  }
  hashing_.Forget(replaced);
  rows_.Remove(replaced);
}

}  // namespace app
