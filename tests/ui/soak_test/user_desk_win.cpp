// The random user moves the window, opens its dialogs, and changes files.
#include <chrono>
#include <stdexcept>
#include <thread>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/temp_tree.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/soak_test/random_user_win.h"

namespace app::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using swr::testing::AskWindow;

constexpr int escapeKey = 0x1B;

}  // namespace

void RandomUser::RestoreIfMinimized() const {
  if (!window_.IsMinimized()) return;
  AskWindow(window_.Handle(), WM_SYSCOMMAND, SC_RESTORE);
  if (!WaitFor([&] { return !window_.IsMinimized(); })) {
    throw std::runtime_error("the window stays minimized");
  }
}

void RandomUser::ShowNormal() const {
  RestoreIfMinimized();
  if (!IsZoomed(window_.Handle())) return;
  AskWindow(window_.Handle(), WM_SYSCOMMAND, SC_RESTORE);
  if (!WaitFor([&] { return !IsZoomed(window_.Handle()); })) {
    throw std::runtime_error("the window stays maximized");
  }
}

// A menu closes when the display server reports late that another window had the focus. Then it is
// opened again, as a user would do.
void RandomUser::OpenPopup(const std::function<void()>& open) const {
  for (int attempts = 0; attempts < 5; ++attempts) {
    open();
    if (WaitFor([&] { return !window_.OpenMenu().empty(); }, seconds(4))) return;
  }
  throw std::runtime_error("the menu does not open");
}

std::string RandomUser::ResizeWindow() {
  if (dice_.OneIn(3)) {
    window_.MoveTo(static_cast<int>(dice_.Pick(300)), static_cast<int>(dice_.Pick(200)));
    return "moved";
  }
  window_.Resize(
      {static_cast<int>(100 + dice_.Pick(1600)), static_cast<int>(100 + dice_.Pick(1200))});
  return "resized";
}

std::string RandomUser::ChangeShowState() {
  constexpr WPARAM states[] = {SC_MAXIMIZE, SC_MINIMIZE, SC_RESTORE, SC_RESTORE};
  AskWindow(window_.Handle(), WM_SYSCOMMAND, dice_.Of(states));
  return {};
}

std::string RandomUser::ChangeDpi() {
  constexpr int known[] = {96, 96, 120, 144, 192};
  const int dpi = dice_.Of(known);
  window_.ChangeDpi(dpi, {dpi * 9, dpi * 7});
  if (dice_.OneIn(2)) window_.Resize({dpi * 9, dpi * 7});
  return std::to_string(dpi);
}

// Keys that change only the selection, the focus and the scroll position.
std::string RandomUser::PressKeys() {
  constexpr int keys[] = {VK_DOWN,  VK_UP,    VK_NEXT,   VK_PRIOR, VK_HOME, VK_END,
                          VK_SPACE, VK_RIGHT, VK_ESCAPE, VK_TAB,   'A',     'F'};
  for (size_t count = 1 + dice_.Pick(6); count > 0; --count) {
    window_.PressKey(IDC_LIST, dice_.Of(keys));
  }
  window_.WaitForPostedMessages();
  return {};
}

std::string RandomUser::SelectWithKeyboard() {
  RestoreIfMinimized();
  window_.FocusOn(IDC_LIST);
  window_.TypeChord({VK_CONTROL, 'A'});
  const size_t count = model_.rows.size();
  if (!WaitFor([&] {
        return static_cast<size_t>(AskWindow(window_.Control(IDC_LIST), LVM_GETSELECTEDCOUNT)) ==
               count;
      })) {
    throw Disagreement("Ctrl+A does not select all rows");
  }
  return {};
}

// Other instances may hand over files meanwhile, and hashing continues.
std::string RandomUser::OpenHashText() {
  RestoreIfMinimized();
  window_.PostCommand(ID_HASH_TEXT);
  const ProgramDialog dialog(window_, u"Hash Text");
  AskWindow(dialog.Control(IDC_HT_INPUT), WM_SETTEXT, 0,
            reinterpret_cast<LPARAM>(std::wstring(dice_.Pick(3000), L'x').c_str()));
  const bool isInterrupted = dice_.OneIn(3);
  if (isInterrupted) StartWith(1);
  dialog.Press(IDCANCEL);
  return isInterrupted ? "with a second start" : "";
}

std::string RandomUser::OpenAbout() {
  RestoreIfMinimized();
  window_.PostCommand(ID_ABOUT);
  ProgramDialog(window_, u"About Sumwright").Press(IDOK);
  return {};
}

std::string RandomUser::OpenMenu() {
  if (!LearnOrder()) return "none";
  RestoreIfMinimized();
  window_.SelectOnly(SomeRows(2));
  OpenPopup([&] {
    PostMessageW(window_.Handle(), WM_CONTEXTMENU,
                 reinterpret_cast<WPARAM>(window_.Control(IDC_LIST)), -1);
  });
  if (dice_.OneIn(2)) std::this_thread::sleep_for(milliseconds(dice_.Pick(300)));
  window_.PressKey(0, escapeKey);
  if (!WaitFor([&] { return window_.OpenMenu().empty(); })) {
    throw std::runtime_error("the menu does not close");
  }
  return {};
}

std::string RandomUser::Save() {
  RestoreIfMinimized();
  window_.PostCommand(ID_SAVE_CHECKSUMS);
  const auto shows = [&](const std::u16string& title) {
    return FindDialogOf(window_.ProcessId(), title, window_.Handle()) != nullptr;
  };
  if (!WaitFor([&] { return shows(u"Sumwright") || shows(u"Save Checksums"); })) {
    throw std::runtime_error("Save Checksums opens no dialog");
  }
  if (shows(u"Sumwright")) {
    ProgramDialog(window_, u"Sumwright").Press(IDOK);
    return "nothing to save";
  }
  const ProgramDialog dialog(window_, u"Save Checksums");
  if (dice_.OneIn(2)) {
    dialog.Press(IDCANCEL);
    return "cancelled";
  }
  const std::u16string path = world_.SavePath();
  dialog.SetFileName(path);
  dialog.Press(IDOK);
  // The dialog may have changed the extension.
  const auto deleteSaved = [&] {
    WIN32_FIND_DATAW found = {};
    const HANDLE search = FindFirstFileW(swr::AsWide(path + u"*"), &found);
    if (search == INVALID_HANDLE_VALUE) return false;
    FindClose(search);
    const std::u16string folder = path.substr(0, path.rfind(u'\\') + 1);
    return DeleteFileW(swr::AsWide(folder + swr::FromWide(found.cFileName))) != FALSE;
  };
  if (!WaitFor(deleteSaved)) throw Disagreement("checksums were not saved");
  return {};
}

std::string RandomUser::ActivateAnotherWindow() {
  RestoreIfMinimized();
  window_.ActivateAgain();
  return {};
}

std::string RandomUser::Scroll() {
  if (model_.rows.empty()) return "nothing";
  window_.ScrollToRow(static_cast<int>(dice_.Pick(model_.rows.size())));
  return {};
}

std::string RandomUser::DismissBanner() {
  RestoreIfMinimized();
  if (!window_.IsShown(IDC_BANNER)) return "none";
  window_.FollowBannerLink(DismissLink);
  window_.WaitForPostedMessages();
  if (window_.IsShown(IDC_BANNER)) throw Disagreement("the banner can't be dismissed");
  return {};
}

std::string RandomUser::ChangeFile() {
  // Equally often for a row and for any file.
  size_t file = dice_.Of(world_.PlainFiles());
  if (dice_.OneIn(2) && !model_.rows.empty()) {
    const size_t ofRow = model_.rows[dice_.Pick(model_.rows.size())].file;
    const auto& plain = world_.PlainFiles();
    if (std::find(plain.begin(), plain.end(), ofRow) != plain.end()) file = ofRow;
  }
  switch (dice_.Pick(8)) {
    case 0:
    case 1:
      return world_.Remove(file);
    case 2:
      return world_.Lock(dice_.OneIn(6) ? dice_.Of(world_.Lists()) : file);
    case 3:
      world_.Unlock();
      return "unlocked";
    case 4:
      return world_.Tear(file);
    case 5: {
      const size_t list = dice_.Of(world_.Lists());
      // A row is identified by its checksum file and line.
      return model_.HasRowsOf(list) ? world_.Replace(file) : world_.RewriteList(list);
    }
    default:
      return world_.Replace(file);
  }
}

std::string RandomUser::Wait() {
  const auto time = milliseconds(dice_.Pick(500));
  std::this_thread::sleep_for(time);
  return std::to_string(time.count()) + " ms";
}

}  // namespace app::testing
