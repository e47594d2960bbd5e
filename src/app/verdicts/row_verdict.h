// The text of a row's Status column and its background. Nothing is stored; both are computed on
// demand.
#pragma once

#include <cstdint>
#include <string>

#include "app/rows/row.h"
#include "swr/checksums/pasted_hash.h"

namespace app {

// `expected` is the value in the Expected hash box, or null. The row's own expected digest from a
// checksum file takes precedence.

// The text of the Status column.
std::u16string RowStatusText(const Row& row, const swr::ParsedHash* expected);

// The background of a row. A row that doesn't match the box is not tinted.
enum class RowTint : uint8_t { None, Good, Bad };
RowTint RowTintOf(const Row& row, const swr::ParsedHash* expected);

}  // namespace app
