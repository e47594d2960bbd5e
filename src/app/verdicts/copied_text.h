// The texts that the Copy commands put on the clipboard.
#pragma once

#include <string>
#include <vector>

#include "app/rows/row.h"
#include "swr/hash/algorithms.h"

namespace app {

using CopiedRows = std::vector<const Row*>;

// The digests of `mask` that the rows have: for one row only the digest, or labelled lines if there
// are several; for several rows tagged lines. There must be at least one row.
std::u16string HashesText(const CopiedRows& rows, swr::AlgoMask mask, bool uppercase);
// One line in sha256sum format for each row, with the first algorithm of `mask` that all rows have.
// Empty when there is none.
std::u16string LinesText(const CopiedRows& rows, swr::AlgoMask mask, bool uppercase);
// "SHA256 (name) = hex" for each digest of `mask` that the rows have.
std::u16string TaggedText(const CopiedRows& rows, swr::AlgoMask mask, bool uppercase);
// The paths of the rows, one per line; a single path without a line end.
std::u16string PathsText(const CopiedRows& rows);

}  // namespace app
