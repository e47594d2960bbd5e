// The texts that the Copy commands put on the clipboard.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "app/rows/row.h"
#include "swr/hash/algorithms.h"

namespace app {

using CopiedRows = std::span<const Row* const>;

// The digests of `mask` that the row has: only the digest, or labelled lines if there are several.
std::u16string HashesText(const Row& row, swr::AlgoMask mask, bool uppercase);
// The first algorithm of `mask` that all rows have.
std::optional<swr::AlgoId> CommonAlgo(CopiedRows rows, swr::AlgoMask mask);

// Lines for some of the rows that are copied. The texts of all parts form the whole text.
// One line in sha256sum format for each row; all rows have the digest.
std::u16string ChecksumLines(CopiedRows rows, swr::AlgoId algo, bool uppercase);
// "SHA256 (name) = hex" for each digest of `mask` that the rows have.
std::u16string TaggedLines(CopiedRows rows, swr::AlgoMask mask, bool uppercase);
// The paths of the rows.
std::u16string PathLines(CopiedRows rows);

}  // namespace app
