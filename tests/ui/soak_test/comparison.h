// Compares the window of the soak test with its models: all rows, all columns, all verdicts.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/ui/soak_test/window_model.h"

namespace app::testing {

// Everything that can be read from an idle window.
struct SeenRow {
  std::vector<std::u16string> cells;
  std::u16string details;  // when only this row is selected
};
struct SeenWindow {
  std::vector<std::u16string> headings;
  std::vector<int> sortMarks;
  std::vector<SeenRow> rows;
  std::u16string resultLine;
  std::u16string statusLine;
  std::u16string detailsOfNone;  // when no row is selected
  std::u16string detailsOfAll;   // when all rows are selected; empty if there are fewer than two
};

class Disagreement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Sorts the model's rows into the order of the window. Needs the details of rows whose file is in
// the list several times. Throws Disagreement when the rows differ.
void AdoptOrder(WindowModel& model, const std::vector<SeenRow>& seen);

// Throws Disagreement when the window differs from the window model or the reference model.
// Otherwise the window model has learned what was still unknown, and is idle. Returns the reference
// model with the rows and their verdicts.
ReferenceWindow Compare(WindowModel& model, const SeenWindow& seen);

}  // namespace app::testing
