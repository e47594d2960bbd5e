// The text of the details pane.
#pragma once

#include <cstdint>
#include <string>

#include "app/rows/row.h"

namespace app {

// All that is known of one file. Lines end in CR LF; a tab leads to the column of values. Of a row
// without a signature result the text says that the check is in progress; without a zone record it
// says nothing of the file's origin.
std::u16string RowDetailsText(const Row& row, bool uppercase);

// For several selected rows.
std::u16string SelectionText(size_t rows, uint64_t totalSize);

// For a list of which nothing is selected; empty for an empty list.
std::u16string NoSelectionText(size_t rows);

}  // namespace app
