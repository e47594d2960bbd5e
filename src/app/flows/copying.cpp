#include "app/flows/copying.h"

#include <string>

#include "app/verdicts/copied_text.h"
#include "swr/hash/digest_text.h"

namespace app {

void Copying::CopyHashes(const RowIds& selection) {
  const CopiedRows rows = FindRows(rows_, selection);
  if (rows.empty()) return;
  clipboard_.WriteClipboardText(HashesText(rows, options_.algorithms, options_.uppercase));
}

void Copying::CopyLines(const RowIds& selection) {
  const std::u16string text =
      LinesText(FindRows(rows_, selection), options_.algorithms, options_.uppercase);
  if (!text.empty()) clipboard_.WriteClipboardText(text);
}

void Copying::CopyAllHashes(const RowIds& selection) {
  const CopiedRows rows = FindRows(rows_, selection);
  if (rows.empty()) return;
  clipboard_.WriteClipboardText(TaggedText(rows, swr::AllAlgosMask, options_.uppercase));
}

void Copying::CopyPaths(const RowIds& selection) {
  const CopiedRows rows = FindRows(rows_, selection);
  if (!rows.empty()) clipboard_.WriteClipboardText(PathsText(rows));
}

void Copying::CopyDigest(uint64_t rowId, swr::AlgoId algo) {
  const Row* row = rows_.Find(rowId);
  if (row == nullptr) return;
  clipboard_.WriteClipboardText(
      swr::DigestToWideHex(row->digests[swr::IndexOf(algo)], options_.uppercase));
}

}  // namespace app
