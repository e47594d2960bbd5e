#include "tests/ui/program_dialog_win.h"

#include <commctrl.h>

#include <functional>
#include <stdexcept>

#include "swr/system/wide_text_win.h"
#include "tests/support/remote_list_win.h"
#include "tests/ui/accessible_text_win.h"
#include "tests/ui/link_control_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::testing::AskWindow;

std::u16string TextOf(HWND window) {
  std::wstring text(static_cast<size_t>(AskWindow(window, WM_GETTEXTLENGTH)) + 1, L'\0');
  const LRESULT length =
      AskWindow(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  return swr::FromWide({text.data(), static_cast<size_t>(length)});
}

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

using Condition = std::function<bool(HWND)>;

struct Search {
  const Condition& condition;
  HWND found = nullptr;
};

BOOL CALLBACK StopWhereTrue(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  if (!search.condition(window)) return TRUE;
  search.found = window;
  return FALSE;
}

// The first descendant control that satisfies the condition.
HWND FindControl(HWND dialog, const Condition& condition) {
  Search search{condition};
  EnumChildWindows(dialog, StopWhereTrue, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// The box for names in the system's file dialogs. Its id is the same in all dialogs of Wine and in
// Windows' folder dialog; Windows' open and save dialogs each have a different one.
HWND FileNameBox(HWND dialog) {
  return FindControl(dialog, [](HWND child) {
    const int id = GetDlgCtrlID(child);
    return (id == 1152 || id == 1148 || id == 1001) && ClassOf(child) == L"Edit" &&
           IsWindowVisible(child);
  });
}

// The list of file types, found by its id or, in Windows' save dialog, whose lists have no ids, as
// the list without an edit box.
HWND FileTypeList(HWND dialog) {
  constexpr int fileTypeList = 1136;
  return FindControl(dialog, [](HWND child) {
    if (ClassOf(child) != L"ComboBox") return false;
    const bool takesNoText =
        (GetWindowLongW(child, GWL_STYLE) & CBS_DROPDOWNLIST) == CBS_DROPDOWNLIST;
    return GetDlgCtrlID(child) == fileTypeList ||
           (takesNoText && ClassOf(GetParent(child)) == L"FloatNotifySink");
  });
}

// Windows' message dialogs draw their first sentence and their buttons themselves.
bool DrawsItself(HWND dialog) {
  return FindControl(dialog, [](HWND child) { return ClassOf(child) == L"DirectUIHWND"; }) !=
         nullptr;
}

}  // namespace

HWND FindDialogOf(DWORD process, const std::u16string& title, HWND other) {
  const Condition isWanted = [&](HWND window) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != process || window == other || ClassOf(window) != L"#32770") return false;
    wchar_t text[256] = {};
    const int length = GetWindowTextW(window, text, 256);
    return swr::FromWide({text, static_cast<size_t>(length)}) == title;
  };
  Search search{isWanted};
  EnumWindows(StopWhereTrue, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

ProgramDialog::ProgramDialog(const RunningWindow& window, const std::u16string& title)
    : window_(window) {
  const bool shows = WaitFor([&] {
    dialog_ = FindDialogOf(window.ProcessId(), title, window.Handle());
    return dialog_ != nullptr && IsWindowVisible(dialog_);
  });
  if (!shows) throw std::runtime_error("the dialog does not appear");
}

std::u16string ProgramDialog::Text(int control) const { return TextOf(Control(control)); }

Rect ProgramDialog::Place(int control) const {
  RECT rect;
  GetWindowRect(Control(control), &rect);
  MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&rect), 2);
  return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right),
          static_cast<int>(rect.bottom)};
}

// The texts of a message box from top to bottom; icons have none.
std::vector<std::u16string> ProgramDialog::MessageTexts() const {
  std::vector<std::u16string> texts;
  FindControl(dialog_, [&](HWND child) {
    const std::wstring name = ClassOf(child);
    if (name == L"Static" || name == L"SysLink") texts.push_back(TextOf(child));
    return false;
  });
  std::erase(texts, u"");
  if (DrawsItself(dialog_)) texts.insert(texts.begin(), FirstAccessibleText(dialog_));
  texts.resize(3);
  return texts;
}

std::u16string ProgramDialog::Instruction() const { return MessageTexts()[0]; }

std::u16string ProgramDialog::Content() const { return MessageTexts()[1]; }

std::u16string ProgramDialog::Footer() const { return MessageTexts()[2]; }

void ProgramDialog::FollowLink(const std::u16string& address) const {
  const HWND text = FindControl(dialog_, [&](HWND child) {
    return ClassOf(child) == L"SysLink" && TextOf(child).find(address) != std::u16string::npos;
  });
  if (text == nullptr) throw std::runtime_error("the dialog has no such link");
  ClickLink(text, address);
}

std::u16string ProgramDialog::FileName() const {
  WaitFor([&] { return FileNameBox(dialog_) != nullptr; });
  return TextOf(FileNameBox(dialog_));
}

void ProgramDialog::SetFileName(const std::u16string& name) const {
  if (!WaitFor([&] { return FileNameBox(dialog_) != nullptr; })) {
    throw std::runtime_error("no name can be entered in the dialog");
  }
  AskWindow(FileNameBox(dialog_), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(swr::AsWide(name)));
}

std::vector<std::u16string> ProgramDialog::FileTypes() const {
  const HWND list = FileTypeList(dialog_);
  std::vector<std::u16string> labels;
  for (LRESULT i = 0, count = AskWindow(list, CB_GETCOUNT); i < count; ++i) {
    const auto item = static_cast<WPARAM>(i);
    std::wstring label(static_cast<size_t>(AskWindow(list, CB_GETLBTEXTLEN, item)) + 1, L'\0');
    AskWindow(list, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(label.data()));
    label.pop_back();
    labels.push_back(swr::FromWide(label));
  }
  return labels;
}

int ProgramDialog::FileType() const {
  return static_cast<int>(AskWindow(FileTypeList(dialog_), CB_GETCURSEL));
}

void ProgramDialog::ChooseFileType(int number) const {
  const HWND list = FileTypeList(dialog_);
  AskWindow(list, CB_SETCURSEL, static_cast<WPARAM>(number));
  AskWindow(GetParent(list), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), CBN_SELCHANGE),
            reinterpret_cast<LPARAM>(list));
}

void ProgramDialog::PostPress(int button) const {
  if (Control(button) == nullptr && DrawsItself(dialog_)) {
    PostMessageW(dialog_, TDM_CLICK_BUTTON, static_cast<WPARAM>(button), 0);
  } else {
    PostMessageW(Control(button), BM_CLICK, 0, 0);
  }
}

void ProgramDialog::Press(int button) const {
  PostPress(button);
  if (!WaitFor([&] { return !IsWindow(dialog_) && window_.TakesInput(); })) {
    throw std::runtime_error("the dialog does not close");
  }
}

}  // namespace app::testing
