// What the window's decisions ask of the screen, in the words of the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
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

// The entries of the shell that start this copy of the program.
struct ShellEntryChecks {
  bool explorerMenu = false;
  bool canChangeExplorerMenu = true;
  bool sendTo = false;
};

// The options that the menu shows as checked.
struct OptionChecks {
  bool uppercase = false;
  bool showLegacy = false;
  bool includeHidden = false;
  bool crLf = false;
  // Nothing where the menu has no such entries.
  std::optional<ShellEntryChecks> shellEntries;
};

// What the result line says, which decides how it is drawn.
enum class ResultKind : uint8_t {
  None = 0,  // nothing
  Good = 1,  // a match, all OK
  Bad = 2,   // no match, some not OK
  Hint = 3,  // not a hash, or a file is wanted
  Busy = 4,  // still working
};

// The buttons beside the details that can be pressed now.
struct DetailButtons {
  bool copyHashes = false;
  bool lookUpOnline = false;
  bool openFolder = false;
};

struct ScreenPoint {
  int32_t x = 0;
  int32_t y = 0;
};

// What depends on the selection in the list's context menu.
struct ListMenu {
  std::vector<swr::AlgoId> digests;  // of the one selected row, each with an entry to copy it
  bool canLookUp = false;
  bool canCompare = false;
};

struct ListMenuChoice {
  uint32_t command = 0;  // meaningful without `digest`
  std::optional<swr::AlgoId> digest;
};

// Where the window stands, apart from being maximized, in workspace coordinates.
struct WindowPlacement {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
  bool maximized = false;

  bool operator==(const WindowPlacement&) const = default;
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
  virtual size_t SelectedRowCount() const = 0;
  virtual void ClearSelection() = 0;
  // Selects and focuses the row beside what is selected already, and scrolls to it.
  virtual void SelectRow(size_t index) = 0;
  // The row comes to stand on top, as far as there are rows behind it.
  virtual void ScrollToRow(size_t index) = 0;
  // Selects all text of the edit box that has the focus, or else all rows.
  virtual void SelectAll() = 0;
  // Pastes into the edit box that has the focus. False when none has.
  virtual bool PasteIntoFocusedEdit() = 0;
  // Copies the selected text of the edit box that has the focus. False when none has.
  virtual bool CopyFromFocusedEdit() = 0;

  // Replaces all columns.
  virtual void SetColumns(const std::vector<ColumnSpec>& columns) = 0;
  // The mark of sorting in this column's heading, and in no other; without a column in none.
  virtual void ShowSortMark(std::optional<size_t> column, bool descending) = 0;
  // The present widths by column index, in pixels at 96 DPI.
  virtual std::vector<uint32_t> ColumnWidths() const = 0;

  virtual void ShowAlgoSelection(swr::AlgoMask mask, const std::u16string& moreText) = 0;
  // Whether the algorithm's own box is checked; false for one that has none.
  virtual bool IsAlgoChecked(swr::AlgoId id) const = 0;
  virtual void ShowOptions(const OptionChecks& checks) = 0;
  // Takes the shell's entries out of the menu of options, for good.
  virtual void RemoveShellEntryCommands() = 0;
  // What the menu calls ID_PROGRAM_FOLDER.
  virtual void SetProgramFolderText(const std::u16string& text) = 0;
  // The choice made in the menu of all algorithms, if any.
  virtual std::optional<swr::AlgoId> ChooseAlgo(swr::AlgoMask mask, bool withLegacy) = 0;

  virtual std::u16string ExpectedText() const = 0;
  // Leads to MainWindow::OnExpectedEdited, as a change by the user does.
  virtual void SetExpectedText(const std::u16string& text) = 0;
  virtual void SetResultLine(const std::u16string& text, ResultKind kind) = 0;
  // Links in the text are written <a id="...">words</a> and lead to MainWindow::OnBannerLink.
  virtual void ShowBanner(const std::u16string& markup) = 0;
  virtual void HideBanner() = 0;
  // Lines end in CR LF; a tab leads to the column of values.
  virtual void SetDetails(const std::u16string& text, const DetailButtons& buttons) = 0;

  // Shows the menu at this place, or beside the focused row, until something is chosen or not.
  virtual std::optional<ListMenuChoice> ChooseListCommand(const ListMenu& menu,
                                                          std::optional<ScreenPoint> at) = 0;

  virtual void SetStatusText(const std::u16string& text) = 0;
  // Shows the bar, the Cancel button and the progress on the taskbar; without figures hides them.
  virtual void ShowProgress(const std::optional<ProgressFigures>& figures) = 0;

  // Nothing when the system does not say.
  virtual std::optional<WindowPlacement> Placement() const = 0;
  // Moves the window without showing it. False, and the window stays, when the place is on no
  // screen or smaller than the window can be.
  virtual bool MoveTo(const WindowPlacement& placement) = 0;
};

}  // namespace app
