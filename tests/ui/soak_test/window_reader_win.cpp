#include "tests/ui/soak_test/window_reader_win.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <map>
#include <numeric>
#include <stdexcept>
#include <thread>
#include <utility>

#include "resources/resource_ids.h"
#include "swr/text/encoding.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using swr::testing::AskWindow;

// Signatures are checked on a separate thread.
std::u16string SettledDetails(const RunningWindow& window, int row) {
  window.SelectOnly({row});
  std::u16string details;
  const bool isSettled = WaitFor([&] {
    details = window.Text(IDC_DETAILS);
    return details.find(u"Signature:\tChecking...") == details.npos;
  });
  if (!isSettled) throw std::runtime_error("a signature check did not end");
  return details;
}

// Reads these columns of all rows, a few at a time, because reading everything at once would delay
// the window's other answers.
std::vector<std::vector<std::u16string>> CellsOf(const RunningWindow& window,
                                                 const std::vector<int>& columns) {
  constexpr int cellsAtOnce = 32;
  const int step = std::max(1, cellsAtOnce / static_cast<int>(columns.size()));
  std::vector<std::vector<std::u16string>> cells;
  for (int row = 0, count = window.RowCount(); row < count; row += step) {
    std::ranges::move(window.List().Texts(row, std::min(step, count - row), columns),
                      std::back_inserter(cells));
  }
  return cells;
}

bool HasUnfinishedRow(const RunningWindow& window) {
  const int status = window.List().ColumnCount() - 1;
  return std::ranges::any_of(CellsOf(window, {status}), [](const auto& cells) {
    return cells.front() == u"Waiting" || cells.front() == u"Hashing";
  });
}

}  // namespace

void WaitForStableIdle(const RunningWindow& window) {
  const auto isIdle = [&] { return !window.IsShown(IDC_CANCEL) && !HasUnfinishedRow(window); };
  // Longer than the interval of the program's progress timer.
  constexpr milliseconds pause{250};
  const auto end = std::chrono::steady_clock::now() + seconds(180);
  for (int idleChecks = 0; idleChecks < 2;) {
    if (std::chrono::steady_clock::now() > end) {
      throw std::runtime_error("the program did not become idle");
    }
    idleChecks = isIdle() ? idleChecks + 1 : 0;
    if (idleChecks < 2) std::this_thread::sleep_for(idleChecks == 0 ? milliseconds(40) : pause);
  }
}

SeenWindow ReadWindow(const RunningWindow& window) {
  SeenWindow seen;
  seen.headings = window.List().ColumnHeadings();
  seen.sortMarks = window.SortMarks();
  const int count = window.RowCount();
  std::vector<int> columns(seen.headings.size());
  std::iota(columns.begin(), columns.end(), 0);
  for (auto& cells : CellsOf(window, columns)) {
    seen.rows.push_back({.cells = std::move(cells)});
  }
  for (int i = 0; i < count; ++i) {
    seen.rows[static_cast<size_t>(i)].details = SettledDetails(window, i);
  }
  seen.resultLine = window.Text(IDC_RESULT);
  seen.statusLine = window.Text(IDC_STATUS_TEXT);
  if (count > 1) {
    window.FocusOn(IDC_LIST);  // otherwise a focused edit box would select its text instead
    window.Command(ID_SELECT_ALL);
    seen.detailsOfAll = window.Text(IDC_DETAILS);
  }
  window.SelectOnly({});
  seen.detailsOfNone = window.Text(IDC_DETAILS);
  return seen;
}

std::vector<SeenRow> ReadOrder(const RunningWindow& window) {
  std::vector<SeenRow> seen;
  std::map<std::vector<std::u16string>, int> times;
  for (auto& cells : CellsOf(window, {0, 1})) {
    ++times[cells];
    seen.push_back({.cells = std::move(cells)});
  }
  for (size_t i = 0; i < seen.size(); ++i) {
    if (times[seen[i].cells] == 1) continue;
    window.SelectOnly({static_cast<int>(i)});
    seen[i].details = window.Text(IDC_DETAILS);
  }
  return seen;
}

void CheckColours(const RunningWindow& window, const ReferenceWindow& reference) {
  const HWND list = window.Control(IDC_LIST);
  SetForegroundWindow(window.Handle());
  const int top = window.TopRow();
  const int shown = std::min(static_cast<int>(AskWindow(list, LVM_GETCOUNTPERPAGE)),
                             static_cast<int>(reference.rows.size()) - top);
  for (int row = top; row < top + std::min(shown, 4); ++row) {
    uint32_t expected = 0xFFFFFF;
    switch (reference.Tint(reference.rows[static_cast<size_t>(row)])) {
      case RowTint::Good:
        expected = 0xDEF4DE;
        break;
      case RowTint::Bad:
        expected = 0xFADEDE;
        break;
      case RowTint::None:
        break;
    }
    if (!WaitFor([&] { return window.RowBackground(row) == expected; }, seconds(10))) {
      throw Disagreement("the colour of row " + std::to_string(row) + " is " +
                         std::to_string(window.RowBackground(row)) + " instead of " +
                         std::to_string(expected));
    }
  }
}

}  // namespace app::testing
