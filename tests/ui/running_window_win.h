// Starts Sumwright.exe and drives its window from outside, as a user or another program would:
// reads it through window messages and sends it commands, keys and drops.
#pragma once

#include "swr/system/windows_api_win.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/screen/link_ids.h"
#include "tests/support/remote_list_win.h"
#include "tests/ui/process_resources_win.h"
#include "tests/ui/program_process_win.h"
#include "tests/ui/remote_call_win.h"
#include "tests/ui/remote_menu_win.h"

namespace app::testing {

struct Rect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool operator==(const Rect&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Rect& rect);

struct Size {
  int width = 0;
  int height = 0;

  bool operator==(const Size&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Size& size);

// Rows, columns and controls have the program's own numbers. Queries return the current state.
// Commands return when they have been carried out, unless stated otherwise. Throws
// std::runtime_error when the program does not answer.
class RunningWindow {
 public:
  // Starts the program and waits until it has set up its window and added the start-up paths.
  explicit RunningWindow(const StartOptions& options = {});
  // The same for a program that was started before.
  explicit RunningWindow(ProgramProcess process);
  // Ends the program, if necessary by force.
  ~RunningWindow();
  RunningWindow(const RunningWindow&) = delete;
  RunningWindow& operator=(const RunningWindow&) = delete;

  // The whole window. Sizes are in pixels.
  HWND Handle() const { return window_; }
  DWORD ProcessId() const { return process_.Id(); }
  std::u16string Title() const;
  bool IsMinimized() const { return IsIconic(window_) != FALSE; }
  int Dpi() const;
  Size OuterSize() const;
  Size ClientSize() const;
  void Resize(Size outer) const;
  void MoveTo(int x, int y) const;
  // Simulates a move to a screen with this DPI, for which Windows suggests this size. Returns when
  // the layout is done; the size stays the same.
  void ChangeDpi(int dpi, Size suggested) const;
  // Converts a rectangle from dialog units to pixels: position and size, not the far corner.
  Rect FromDialogUnits(int x, int y, int width, int height) const;
  std::vector<std::u16string> MenuBar() const;
  std::vector<MenuItem> Menu(int position) const;
  // The open menu; empty while none is open.
  std::vector<MenuItem> OpenMenu() const;

  // Controls.
  HWND Control(int id) const { return GetDlgItem(window_, id); }
  std::u16string Text(int id) const;
  std::u16string ClassOf(int id) const;
  // In the window's client area.
  Rect Place(int id) const;
  bool IsShown(int id) const;
  bool IsEnabled(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }
  bool IsChecked(int id) const;
  int ProgressPosition() const;
  // The ideal size of a push button or check box for its text and picture.
  Size IdealSize(int id) const;
  std::vector<int> ControlsInOrder() const;
  // The controls in the order of the Tab key.
  std::vector<int> TabOrder() const;
  int FocusedControl() const;
  void FocusOn(int control) const;

  // The list.
  const swr::testing::RemoteList& List() const { return *list_; }
  int RowCount() const { return list_->ItemCount(); }
  std::vector<std::u16string> Row(int row) const;
  // The text under this heading. Throws when there is no such column.
  std::u16string Cell(int row, const std::u16string& heading) const;
  // All cells of the column.
  std::vector<std::u16string> Column(const std::u16string& heading) const;
  std::vector<int> ColumnWidths() const;
  bool IsRightAligned(int column) const;
  // For each column: 1 if its heading is marked as sorted ascending, -1 if descending, otherwise 0.
  std::vector<int> SortMarks() const;
  void SelectOnly(const std::vector<int>& rows) const;
  int TopRow() const;
  // The colour of a visible row on the screen: 0xRRGGBB.
  uint32_t RowBackground(int row) const;
  void ScrollToRow(int row) const;
  // False when the heading can't be scrolled into view: an empty list does not scroll.
  bool ClickHeading(int column) const;

  // Commands.
  void Command(int id) const;
  // Returns at once; for commands that open a menu or a dialog.
  void PostCommand(int id) const { PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(id), 0); }
  // Clicks a button or check box.
  void Click(int control) const;
  // Returns at once. Sends the key to this control, or to the window if there is none.
  void PressKey(int control, int key) const;
  // Activates the window, as a click on it does. Returns when it is in front.
  void BringToFront() const;
  // Presses these keys together, as on a keyboard, with the window in front. Returns at once.
  void TypeChord(const std::vector<int>& keys) const;
  void Drop(const std::vector<std::u16string>& paths) const;
  // Replaces the text of the Expected hash box in a single edit.
  void SetExpected(const std::u16string& text) const;
  // Clicks the link with this id in this control.
  void FollowLink(int control, std::u16string_view id) const;
  void FollowBannerLink(std::u16string_view id) const;
  // Activates another window, then this one again.
  void ActivateAgain() const;
  // Opens the list's menu for the selected rows, as the keyboard does.
  void OpenListMenu() const;
  // Chooses an entry of the open menu.
  void ChooseFromMenu(uint32_t id) const;

  // Returns when all messages posted so far have been handled.
  void WaitForPostedMessages() const;
  // Waits until no row is waiting or being hashed and the status line shows no progress.
  void WaitUntilIdle() const;
  // Returns when the window answers a message.
  void Ping() const { swr::testing::AskWindow(window_, WM_NULL); }
  // False while a dialog is open over the window.
  bool TakesInput() const { return IsWindowEnabled(window_) != FALSE; }

  ProcessResources Resources() const { return CountResources(process_.Handle()); }
  ProcessMemory Memory() const { return MeasureMemory(process_.Handle()); }

  // Waits for the end of the program. Returns the exit code.
  int Close();
  bool HasEnded() const { return process_.HasEnded(); }
  int WaitForEnd() const { return process_.WaitForEnd(); }

 private:
  int ColumnOf(const std::u16string& heading) const;
  bool HasUnfinishedRow() const;

  ProgramProcess process_;
  HWND window_ = nullptr;
  std::unique_ptr<swr::testing::RemoteList> list_;
  std::unique_ptr<RemoteCaller> caller_;
};

}  // namespace app::testing
