// Finds a row by the first letters of its name, as they are typed into the list.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "app/rows/row_table.h"

namespace app {

// The first row, searching from the index `first` to the end and then from the top, whose displayed
// name begins with the typed text or, with `whole`, equals it, ignoring case. Nothing for an empty
// text.
std::optional<size_t> FindRowNamed(const RowTable& rows, std::u16string_view typed, size_t first,
                                   bool whole);

}  // namespace app
