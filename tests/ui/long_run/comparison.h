// The window of a long run against its model: all rows, all columns, all verdicts.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/ui/long_run/window_model.h"

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

// Throws Disagreement where the window is not as the model and the slow judge say. The model learns
// what it had left open, and is at rest. The result holds the rows as the judge has judged them.
ReferenceWindow Compare(WindowModel& model, const SeenWindow& seen);

// The text of a cell by the slow judge.
std::u16string ReferenceCell(const ReferenceWindow& judge, const ReferenceFileRow& row,
                             const std::u16string& heading);

}  // namespace app::testing
