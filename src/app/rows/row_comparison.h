// Compares a row with an expected digest.
#pragma once

#include <cstdint>
#include <span>

#include "app/rows/row.h"
#include "swr/checksums/expected_digest.h"
#include "swr/hash/algorithms.h"

namespace app {

using swr::CompareOutcome;
using swr::CompareResult;

// See swr::CompareDigests. A failed row is Missing or Unreadable. A cancelled row is NotChecked
// where another would be Pending.
CompareResult CompareRow(const Row& row, std::span<const uint8_t> expectedBytes,
                         std::span<const swr::AlgoId> candidates);

// Compares the row with its expected digest from a checksum file.
CompareResult CompareWithOwn(const Row& row);

}  // namespace app
