// The text of the details pane.
#pragma once

#include <cstdint>
#include <string>

#include "app/rows/row.h"

namespace app {

// Everything known about one file. Lines end in CR LF; a tab precedes the column of values. For a
// row without a signature result the text says that the check is in progress; without a zone record
// it does not mention the file's origin.
std::u16string RowDetailsText(const Row& row, bool uppercase);

// For several selected rows.
std::u16string SelectionText(size_t rows, uint64_t totalSize);

// For a list without a selection; empty for an empty list.
std::u16string NoSelectionText(size_t rows);

}  // namespace app
