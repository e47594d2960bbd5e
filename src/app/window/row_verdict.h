// Judges a row: its digests against an expected one, and the words of its Status column. Nothing is
// stored; both are worked out anew each time.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "app/window/list_row.h"
#include "swr/checksums/expected_digest.h"
#include "swr/checksums/pasted_hash.h"

namespace app {

using swr::CompareOutcome;
using swr::CompareResult;

// See swr::CompareDigests. A failed row is Missing or Unreadable, and a cancelled one NotChecked
// where another would be Pending.
CompareResult CompareRow(const ListRow& row, std::span<const uint8_t> expectedBytes,
                         std::span<const swr::AlgoId> candidates);

// The row against what a checksum file says of it.
CompareResult CompareWithOwn(const ListRow& row);

// The two that follow take the value in the Expected hash box, or null. The row's own expected
// digest takes precedence over it.

// The text of the Status column.
std::u16string RowStatusText(const ListRow& row, const swr::ParsedHash* box);

// The background of a row. A mismatch with the box tints no row.
enum class RowTint : uint8_t { None, Good, Bad };
RowTint RowTintOf(const ListRow& row, const swr::ParsedHash* box);

}  // namespace app
