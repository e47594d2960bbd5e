// Compares the window of a soak test with its model: all rows, all columns, all verdicts.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/ui/soak_test/window_model.h"

namespace app::testing {

// Everything readable of an idle window.
struct SeenRow {
  std::vector<std::u16string> cells;
  std::u16string details;  // when it alone is selected
};
struct SeenWindow {
  std::vector<std::u16string> headings;
  std::vector<int> sortMarks;
  std::vector<SeenRow> rows;
  std::u16string resultLine;
  std::u16string statusLine;
  std::u16string detailsOfNone;  // when no row is selected
  std::u16string detailsOfAll;   // when all are; empty where there are fewer than two
};

class Disagreement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Puts the model's rows in the order of the window. Needs the details of rows whose file is in the
// list several times. Throws Disagreement when these are not the same rows.
void TakeOrder(WindowModel& model, const std::vector<SeenRow>& seen);

// Throws Disagreement when the window differs from the window model or the reference model. The
// window model then knows what it had left open, and is idle. Returns the reference model with the
// rows and their verdicts.
ReferenceWindow Compare(WindowModel& model, const SeenWindow& seen);

}  // namespace app::testing
