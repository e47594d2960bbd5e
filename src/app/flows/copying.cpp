#include "app/flows/copying.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "swr/hash/digest_text.h"

namespace app {

void Copying::CopyHashes(const RowIds& selection) {
  const std::vector<const Row*> rows = FindRows(rows_, selection);
  if (rows.size() == 1) {
    clipboard_.WriteClipboardText(
        TextInParts::Of(HashesText(*rows.front(), options_.algorithms, options_.uppercase)));
    return;
  }
  CopyInParts(rows, [&](CopiedRows part) {
    return TaggedLines(part, options_.algorithms, options_.uppercase);
  });
}

void Copying::CopyLines(const RowIds& selection) {
  const std::vector<const Row*> rows = FindRows(rows_, selection);
  // One algorithm for all lines, so that together they form a checksum file.
  const std::optional<swr::AlgoId> algo = CommonAlgo(rows, options_.algorithms);
  if (!algo) return;
  CopyInParts(rows,
              [&](CopiedRows part) { return ChecksumLines(part, *algo, options_.uppercase); });
}

void Copying::CopyAllHashes(const RowIds& selection) {
  CopyInParts(FindRows(rows_, selection), [&](CopiedRows part) {
    return TaggedLines(part, swr::AllAlgosMask, options_.uppercase);
  });
}

void Copying::CopyPaths(const RowIds& selection) {
  const std::vector<const Row*> rows = FindRows(rows_, selection);
  if (rows.size() == 1) {
    clipboard_.WriteClipboardText(TextInParts::Of(rows.front()->Path()));
  } else {
    CopyInParts(rows, PathLines);
  }
}

void Copying::CopyDigest(uint64_t rowId, swr::AlgoId algo) {
  const Row* row = rows_.Find(rowId);
  if (row == nullptr) return;
  clipboard_.WriteClipboardText(
      TextInParts::Of(swr::DigestToWideHex(row->digests[swr::IndexOf(algo)], options_.uppercase)));
}

void Copying::CopyInParts(CopiedRows rows,
                          const std::function<std::u16string(CopiedRows)>& textOf) {
  if (rows.empty()) return;
  constexpr size_t rowsOfPart = 1000;
  const auto partFrom = [&](size_t first) {
    return rows.subspan(first, std::min(rowsOfPart, rows.size() - first));
  };
  const std::u16string first = textOf(partFrom(0));
  // Names that become longer, as "file 9" and "file 10" do, are to fit as well.
  const size_t likelySize =
      rows.size() <= rowsOfPart ? first.size() : first.size() / rowsOfPart * rows.size() / 16 * 17;
  clipboard_.WriteClipboardText({likelySize, [&](const TextInParts::Append& append) {
                                   append(first);
                                   for (size_t i = rowsOfPart; i < rows.size(); i += rowsOfPart) {
                                     append(textOf(partFrom(i)));
                                   }
                                 }});
}

}  // namespace app
