#include "tests/ui/running_window_win.h"

#include <commctrl.h>
#include <shlobj.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/link_control_win.h"
#include "tests/ui/program_dialog_win.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using swr::testing::AskWindow;
using swr::testing::RemoteMemory;

constexpr int maxText = 8192;

std::u16string TextOf(HWND window) {
  wchar_t text[maxText] = {};
  DWORD_PTR length = 0;
  if (!SendMessageTimeoutW(window, WM_GETTEXT, maxText, reinterpret_cast<LPARAM>(text), SMTO_NORMAL,
                           60'000, &length)) {
    throw std::runtime_error("the text of a control can't be read");
  }
  return swr::FromWide({text, length});
}

uint64_t Number(HWND window) { return reinterpret_cast<uint64_t>(window); }

}  // namespace

std::ostream& operator<<(std::ostream& out, const Rect& rect) {
  return out << "(" << rect.left << ", " << rect.top << ")-(" << rect.right << ", " << rect.bottom
             << ")";
}

std::ostream& operator<<(std::ostream& out, const Size& size) {
  return out << size.width << " x " << size.height;
}

RunningWindow::RunningWindow(const StartOptions& options)
    : RunningWindow(ProgramProcess::WithWindow(options)) {}

RunningWindow::RunningWindow(ProgramProcess process) : process_(std::move(process)) {
  const bool shows = WaitFor([&] {
    window_ = swr::testing::FindMainWindow(ProcessId());
    return window_ != nullptr;
  });
  if (!shows) throw std::runtime_error("the program shows no window");
  WaitForPostedMessages();
  list_ = std::make_unique<swr::testing::RemoteList>(Control(IDC_LIST));
  caller_ = std::make_unique<RemoteCaller>(window_);
}

RunningWindow::~RunningWindow() {
  list_.reset();
  caller_.reset();
  if (window_ != nullptr) PostMessageW(window_, WM_CLOSE, 0, 0);
  WaitForSingleObject(process_.Handle(), 10'000);
}

std::u16string RunningWindow::Title() const { return TextOf(window_); }

int RunningWindow::Dpi() const {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return dpi;
}

Size RunningWindow::OuterSize() const {
  RECT rect = {};
  GetWindowRect(window_, &rect);
  return {rect.right - rect.left, rect.bottom - rect.top};
}

Size RunningWindow::ClientSize() const {
  RECT rect = {};
  GetClientRect(window_, &rect);
  return {rect.right, rect.bottom};
}

void RunningWindow::Resize(Size outer) const {
  SetWindowPos(window_, nullptr, 0, 0, outer.width, outer.height,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void RunningWindow::MoveTo(int x, int y) const {
  SetWindowPos(window_, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void RunningWindow::ChangeDpi(int dpi, Size suggested) const {
  const RECT rect = {0, 0, suggested.width, suggested.height};
  caller_->Scratch().Write(0, &rect, sizeof rect);
  AskWindow(window_, WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
            static_cast<LPARAM>(caller_->ScratchAddress()));
  WaitForPostedMessages();  // the window posts itself a message to finish the layout
}

// The program handles posted messages in order. Once it has handled this last one, posted to a
// control, it has handled everything before.
void RunningWindow::WaitForPostedMessages() const {
  const HWND box = Control(IDC_EXPECTED);
  const LRESULT limit = AskWindow(box, EM_GETLIMITTEXT);
  const LRESULT mark = limit - 1;
  PostMessageW(box, EM_SETLIMITTEXT, static_cast<WPARAM>(mark), 0);
  if (!WaitFor([&] { return AskWindow(box, EM_GETLIMITTEXT) == mark; })) {
    throw std::runtime_error("the window does not handle its messages");
  }
  AskWindow(box, EM_SETLIMITTEXT, static_cast<WPARAM>(limit));
}

Rect RunningWindow::FromDialogUnits(int x, int y, int width, int height) const {
  RECT rect = {x, y, width, height};
  caller_->Scratch().Write(0, &rect, sizeof rect);
  if (caller_->Call(MapDialogRect, {Number(window_), caller_->ScratchAddress()}) == 0) {
    throw std::runtime_error("dialog units cannot be converted");
  }
  caller_->Scratch().Read(0, &rect, sizeof rect);
  return {rect.left, rect.top, rect.left + rect.right, rect.top + rect.bottom};
}

std::vector<std::u16string> RunningWindow::MenuBar() const {
  std::vector<std::u16string> texts;
  for (const MenuItem& item : ReadMenu(*caller_, caller_->Call(GetMenu, {Number(window_)}))) {
    texts.push_back(item.text);
  }
  return texts;
}

std::vector<MenuItem> RunningWindow::Menu(int position) const {
  const uint64_t bar = caller_->Call(GetMenu, {Number(window_)});
  const uint64_t menu = caller_->Call(GetSubMenu, {bar, static_cast<uint64_t>(position)});
  return ReadMenu(*caller_, menu);
}

std::vector<MenuItem> RunningWindow::OpenMenu() const {
  const auto menu = FindOpenMenu(ProcessId());
  return menu ? ReadMenu(*caller_, *menu) : std::vector<MenuItem>{};
}

std::u16string RunningWindow::Text(int id) const { return TextOf(Control(id)); }

std::u16string RunningWindow::ClassOf(int id) const {
  wchar_t name[64] = {};
  const int length = GetClassNameW(Control(id), name, 64);
  return swr::FromWide({name, static_cast<size_t>(length)});
}

Rect RunningWindow::Place(int id) const {
  RECT rect = {};
  GetWindowRect(Control(id), &rect);
  MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&rect), 2);
  return {rect.left, rect.top, rect.right, rect.bottom};
}

bool RunningWindow::IsShown(int id) const {
  return (GetWindowLongW(Control(id), GWL_STYLE) & WS_VISIBLE) != 0;
}

bool RunningWindow::IsChecked(int id) const {
  return AskWindow(Control(id), BM_GETCHECK) == BST_CHECKED;
}

int RunningWindow::ProgressPosition() const {
  return static_cast<int>(AskWindow(Control(IDC_PROGRESS), PBM_GETPOS));
}

Size RunningWindow::IdealSize(int id) const {
  SIZE size = {};
  caller_->Scratch().Write(0, &size, sizeof size);
  AskWindow(Control(id), BCM_GETIDEALSIZE, 0, static_cast<LPARAM>(caller_->ScratchAddress()));
  caller_->Scratch().Read(0, &size, sizeof size);
  return {size.cx, size.cy};
}

std::vector<int> RunningWindow::ControlsInOrder() const {
  std::vector<int> ids;
  for (HWND child = GetWindow(window_, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    ids.push_back(GetDlgCtrlID(child));
  }
  return ids;
}

std::vector<int> RunningWindow::TabOrder() const {
  std::vector<int> ids;
  HWND control = GetNextDlgTabItem(window_, nullptr, FALSE);
  const HWND first = control;
  do {
    ids.push_back(GetDlgCtrlID(control));
    control = GetNextDlgTabItem(window_, control, FALSE);
  } while (control != first && control != nullptr && ids.size() < 100);
  return ids;
}

int RunningWindow::FocusedControl() const {
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
  return info.hwndFocus == nullptr ? 0 : GetDlgCtrlID(info.hwndFocus);
}

void RunningWindow::FocusOn(int control) const {
  AskWindow(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(control)), TRUE);
}

std::vector<std::u16string> RunningWindow::Row(int row) const {
  std::vector<int> columns(static_cast<size_t>(list_->ColumnCount()));
  std::iota(columns.begin(), columns.end(), 0);
  return list_->Texts(row, 1, columns).front();
}

int RunningWindow::ColumnOf(const std::u16string& heading) const {
  const std::vector<std::u16string> headings = list_->ColumnHeadings();
  const auto column = std::ranges::find(headings, heading);
  if (column == headings.end()) throw std::runtime_error("there is no such column");
  return static_cast<int>(column - headings.begin());
}

std::u16string RunningWindow::Cell(int row, const std::u16string& heading) const {
  return list_->ItemText(row, ColumnOf(heading));
}

std::vector<std::u16string> RunningWindow::Column(const std::u16string& heading) const {
  std::vector<std::u16string> cells;
  for (const auto& row : list_->Texts(0, RowCount(), {ColumnOf(heading)})) {
    cells.push_back(row.front());
  }
  return cells;
}

std::vector<int> RunningWindow::ColumnWidths() const {
  std::vector<int> widths;
  for (int i = 0, count = list_->ColumnCount(); i < count; ++i) {
    widths.push_back(
        static_cast<int>(AskWindow(Control(IDC_LIST), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(i))));
  }
  return widths;
}

bool RunningWindow::IsRightAligned(int column) const {
  LVCOLUMNW request = {};
  request.mask = LVCF_FMT;
  caller_->Scratch().Write(0, &request, sizeof request);
  AskWindow(Control(IDC_LIST), LVM_GETCOLUMNW, static_cast<WPARAM>(column),
            static_cast<LPARAM>(caller_->ScratchAddress()));
  caller_->Scratch().Read(0, &request, sizeof request);
  return (request.fmt & LVCFMT_JUSTIFYMASK) == LVCFMT_RIGHT;
}

std::vector<int> RunningWindow::SortMarks() const {
  const auto header = reinterpret_cast<HWND>(AskWindow(Control(IDC_LIST), LVM_GETHEADER));
  std::vector<int> marks;
  for (LRESULT i = 0, count = AskWindow(header, HDM_GETITEMCOUNT); i < count; ++i) {
    HDITEMW request = {};
    request.mask = HDI_FORMAT;
    caller_->Scratch().Write(0, &request, sizeof request);
    AskWindow(header, HDM_GETITEMW, static_cast<WPARAM>(i),
              static_cast<LPARAM>(caller_->ScratchAddress()));
    caller_->Scratch().Read(0, &request, sizeof request);
    marks.push_back((request.fmt & HDF_SORTUP) != 0     ? 1
                    : (request.fmt & HDF_SORTDOWN) != 0 ? -1
                                                        : 0);
  }
  return marks;
}

// Both requests are written only once, because the row is passed separately.
void RunningWindow::SelectOnly(const std::vector<int>& rows) const {
  LVITEMW requests[2] = {};
  for (LVITEMW& request : requests) request.stateMask = LVIS_SELECTED;
  requests[1].state = LVIS_SELECTED;
  caller_->Scratch().Write(0, requests, sizeof requests);
  const auto setState = [&](int row, size_t request) {
    AskWindow(Control(IDC_LIST), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
              static_cast<LPARAM>(caller_->ScratchAddress() + request * sizeof(LVITEMW)));
  };
  setState(-1, 0);
  for (const int row : rows) setState(row, 1);
}

uint32_t RunningWindow::RowBackground(int row) const {
  RECT rect = {};
  rect.left = LVIR_BOUNDS;
  caller_->Scratch().Write(0, &rect, sizeof rect);
  AskWindow(Control(IDC_LIST), LVM_GETITEMRECT, static_cast<WPARAM>(row),
            static_cast<LPARAM>(caller_->ScratchAddress()));
  caller_->Scratch().Read(0, &rect, sizeof rect);
  // Above the text, inside the focus frame, and visible.
  POINT place = {std::max(rect.left, LONG{0}) + 8, rect.top + 2};
  ClientToScreen(Control(IDC_LIST), &place);
  const HDC screen = GetDC(nullptr);
  const COLORREF color = GetPixel(screen, place.x, place.y);
  ReleaseDC(nullptr, screen);
  return static_cast<uint32_t>(GetRValue(color) << 16 | GetGValue(color) << 8 | GetBValue(color));
}

int RunningWindow::TopRow() const {
  return static_cast<int>(AskWindow(Control(IDC_LIST), LVM_GETTOPINDEX));
}

void RunningWindow::ScrollToRow(int row) const {
  AskWindow(Control(IDC_LIST), LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

bool RunningWindow::ClickHeading(int column) const {
  const auto header = reinterpret_cast<HWND>(AskWindow(Control(IDC_LIST), LVM_GETHEADER));
  AskWindow(header, HDM_GETITEMRECT, static_cast<WPARAM>(column),
            static_cast<LPARAM>(caller_->ScratchAddress()));
  RECT rect = {};
  caller_->Scratch().Read(0, &rect, sizeof rect);
  const POINT middle = {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
  // A header ignores clicks outside its visible part.
  const auto placeInList = [&] {
    POINT place = middle;
    MapWindowPoints(header, Control(IDC_LIST), &place, 1);
    return place.x;
  };
  RECT list = {};
  GetClientRect(Control(IDC_LIST), &list);
  const auto isInSight = [&] { return placeInList() >= 0 && placeInList() < list.right; };
  if (!isInSight()) {
    AskWindow(Control(IDC_LIST), LVM_SCROLL, static_cast<WPARAM>(placeInList() - list.right / 2));
  }
  if (!isInSight()) return false;
  AskWindow(header, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(middle.x, middle.y));
  AskWindow(header, WM_LBUTTONUP, 0, MAKELPARAM(middle.x, middle.y));
  return true;
}

void RunningWindow::Command(int id) const {
  AskWindow(window_, WM_COMMAND, static_cast<WPARAM>(id));
}

void RunningWindow::Click(int control) const { AskWindow(Control(control), BM_CLICK); }

void RunningWindow::PressKey(int control, int key) const {
  const HWND target = control == 0 ? window_ : Control(control);
  PostMessageW(target, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  PostMessageW(target, WM_KEYUP, static_cast<WPARAM>(key), static_cast<LPARAM>(0xC0000001));
}

void RunningWindow::BringToFront() const {
  // Windows allows the program that received the last input to take the foreground. A key without a
  // meaning is such input.
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = 0xFC;  // VK_NONAME
  SendInput(1, &input, sizeof input);
  input.ki.dwFlags = KEYEVENTF_KEYUP;
  SendInput(1, &input, sizeof input);
  if (!WaitFor([&] {
        SetForegroundWindow(window_);
        return GetForegroundWindow() == window_;
      })) {
    throw std::runtime_error("the window does not come to the front");
  }
}

void RunningWindow::TypeChord(const std::vector<int>& keys) const {
  if (GetForegroundWindow() != window_) BringToFront();
  std::vector<INPUT> inputs;
  const auto add = [&](int key, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = static_cast<WORD>(key);
    input.ki.dwFlags = flags;
    inputs.push_back(input);
  };
  for (auto key = keys.begin(); key != keys.end(); ++key) add(*key, 0);
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) add(*key, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

// The message that the shell posts when files are dropped; here it is sent, so that it has been
// handled on return.
void RunningWindow::Drop(const std::vector<std::u16string>& paths) const {
  std::u16string names;
  for (const std::u16string& path : paths) names += path + u'\0';
  names += u'\0';
  DROPFILES header = {};
  header.pFiles = sizeof header;
  header.fWide = TRUE;
  const RemoteMemory memory(window_, sizeof header + names.size() * sizeof(char16_t));
  memory.Write(0, &header, sizeof header);
  memory.Write(sizeof header, names.data(), names.size() * sizeof(char16_t));
  AskWindow(window_, WM_DROPFILES, reinterpret_cast<WPARAM>(memory.At(0)));
}

void RunningWindow::WaitUntilIdle() const {
  const auto isIdle = [&] {
    // A message that adds files shows the Cancel button at its end and may leave the list to the
    // next one, so neither is looked at while a message is being handled.
    Ping();
    return !IsShown(IDC_CANCEL) && !HasUnfinishedRow();
  };
  if (!WaitFor(isIdle, seconds(60))) {
    throw std::runtime_error("the program did not become idle");
  }
}

bool RunningWindow::HasUnfinishedRow() const {
  const auto isUnfinished = [](const std::u16string& status) {
    return status == u"Waiting" || status == u"Hashing";
  };
  return std::ranges::any_of(Column(u"Status"), isUnfinished);
}

void RunningWindow::SetExpected(const std::u16string& text) const {
  AskWindow(Control(IDC_EXPECTED), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(swr::AsWide(text)));
}

void RunningWindow::FollowLink(int control, std::u16string_view id) const {
  ClickLink(Control(control), std::u16string(id));
}

void RunningWindow::FollowBannerLink(std::u16string_view id) const { FollowLink(IDC_BANNER, id); }

void RunningWindow::ActivateAgain() const {
  const HWND other = CreateWindowExW(0, L"STATIC", L"another program", WS_POPUP | WS_VISIBLE, 0, 0,
                                     50, 50, nullptr, nullptr, nullptr, nullptr);
  // As the program itself sees it.
  const DWORD thread = GetWindowThreadProcessId(window_, nullptr);
  const auto becomes = [&](HWND front, HWND previous, bool active) {
    return WaitFor([&] {
      // Wine does nothing for a window that is the foreground window already, even if the window
      // manager has deactivated it since.
      if (GetForegroundWindow() == front) SetForegroundWindow(previous);
      SetForegroundWindow(front);
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
      GUITHREADINFO info = {};
      info.cbSize = sizeof info;
      return GetGUIThreadInfo(thread, &info) && (info.hwndActive == window_) == active;
    });
  };
  const bool cameBack = becomes(other, window_, false) && becomes(window_, other, true);
  DestroyWindow(other);
  if (!cameBack) throw std::runtime_error("the window does not come to the front");
  Ping();
}

void RunningWindow::OpenListMenu() const {
  PostMessageW(window_, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Control(IDC_LIST)), -1);
  if (!WaitFor([&] { return !OpenMenu().empty(); })) {
    throw std::runtime_error("the list has no menu");
  }
}

void RunningWindow::ChooseFromMenu(uint32_t id) const {
  constexpr int downKey = 0x28;
  constexpr int returnKey = 0x0D;
  for (const MenuItem& item : OpenMenu()) {
    if (item.id == 0) continue;  // the arrow keys skip separators
    PressKey(0, downKey);
    if (item.id == id) break;
  }
  PressKey(0, returnKey);
}

int RunningWindow::Close() {
  PostMessageW(window_, WM_CLOSE, 0, 0);
  return WaitForEnd();
}

}  // namespace app::testing
