// The words of a row's Status column and its background. Nothing is stored; both are worked out
// each time they are asked for.
#pragma once

#include <cstdint>
#include <string>

#include "app/rows/row.h"
#include "swr/checksums/pasted_hash.h"

namespace app {

// `expected` is the value in the Expected hash box, or null. The digest that a checksum file
// expects of the row takes precedence over it.

// The text of the Status column.
std::u16string RowStatusText(const Row& row, const swr::ParsedHash* expected);

// The background of a row. A mismatch with the box tints no row.
enum class RowTint : uint8_t { None, Good, Bad };
RowTint RowTintOf(const Row& row, const swr::ParsedHash* expected);

}  // namespace app
