// The window of a soak test against its model: all rows, all columns, all verdicts.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/ui/soak_test/window_model.h"

namespace app::testing {

// All that there is to be read of a window that has come to rest.
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

// Puts the model's rows in the order in which the window shows them. The details are needed of rows
// whose file is there several times. Throws Disagreement when these are not the same rows.
void TakeOrder(WindowModel& model, const std::vector<SeenRow>& seen);

// Throws Disagreement where the window differs from the window model or the reference model. The
// window model learns what it had left open, and is at rest. Returns the reference model with the
// rows and their verdicts.
ReferenceWindow Compare(WindowModel& model, const SeenWindow& seen);

}  // namespace app::testing
