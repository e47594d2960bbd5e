// What the window's decisions ask of the screen, in the words of the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "swr/hash/algorithms.h"

namespace app {

struct ColumnSpec {
  std::u16string heading;
  uint32_t width = 0;  // pixels at 96 DPI
  bool rightAligned = false;
};

struct ProgressFigures {
  uint32_t position = 0;  // of 10000
  uint64_t doneBytes = 0;
  uint64_t totalBytes = 0;  // never 0
};

// The options that the menu shows as checked.
struct OptionChecks {
  bool uppercase = false;
  bool showLegacy = false;
  bool includeHidden = false;
};

// Implemented by the dialog and by the tests. Called on the window's thread. Row numbers are
// indexes into the list as last announced by SetRowCount.
class View {
 public:
  virtual ~View() = default;

  // Announces the number of rows and repaints the list; the list asks for texts as it needs them.
  virtual void SetRowCount(size_t count) = 0;
  virtual void RedrawRow(size_t index) = 0;
  virtual void RedrawRows() = 0;
  // Ascending.
  virtual std::vector<size_t> SelectedRows() const = 0;
  virtual void ClearSelection() = 0;
  // Selects and focuses the row beside what is selected already, and scrolls to it.
  virtual void SelectRow(size_t index) = 0;
  // Selects all text of the edit box that has the focus, or else all rows.
  virtual void SelectAll() = 0;

  // Replaces all columns.
  virtual void SetColumns(const std::vector<ColumnSpec>& columns) = 0;
  // The present widths by column index, in pixels at 96 DPI.
  virtual std::vector<uint32_t> ColumnWidths() const = 0;

  virtual void ShowAlgoSelection(swr::AlgoMask mask, const std::u16string& moreText) = 0;
  virtual void ShowOptions(const OptionChecks& checks) = 0;
  // The choice made in the menu of all algorithms, if any.
  virtual std::optional<swr::AlgoId> ChooseAlgo(swr::AlgoMask mask, bool withLegacy) = 0;

  virtual void SetStatusText(const std::u16string& text) = 0;
  // Shows the bar, the Cancel button and the progress on the taskbar; without figures hides them.
  virtual void ShowProgress(const std::optional<ProgressFigures>& figures) = 0;
};

}  // namespace app
