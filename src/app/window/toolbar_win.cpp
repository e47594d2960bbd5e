#include "app/window/toolbar_win.h"

#include <vsstyle.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <utility>

#include "app/system/dpi_win.h"
#include "app/system/icons_win.h"
#include "resources/resource_ids.h"

namespace app {
namespace {

struct ToolbarButton {
  int command;  // 0 for a separator
  int icon;
  const wchar_t* label;
  const wchar_t* tip;
};

constexpr ToolbarButton toolbarButtons[] = {
    {ID_ADD_FILES, IDI_ADD_FILES, L"Add Files",
     L"Add files to the list (Ctrl+O). You can also drop files and folders on the window."},
    {ID_ADD_FOLDER, IDI_ADD_FOLDER, L"Add Folder",
     L"Add every file in a folder and its subfolders"},
    {0, 0, nullptr, nullptr},
    {ID_VERIFY_FILE, IDI_VERIFY_FILE, L"Verify Checksum File",
     L"Check the files listed in a SHA256SUMS, .sha256, .md5, .sfv or similar file"},
    {ID_HASH_TEXT, IDI_HASH_TEXT, L"Hash Text", L"Calculate the checksums of typed or pasted text"},
    {0, 0, nullptr, nullptr},
    {ID_SAVE_CHECKSUMS, IDI_SAVE_CHECKSUMS, L"Save Checksums",
     L"Save the checksums to a file (Ctrl+S)"},
    {ID_CLEAR_LIST, IDI_CLEAR_LIST, L"Clear List", L"Remove all files from the list"},
};

struct ButtonImage {
  int control;
  int icon;
};

constexpr ButtonImage buttonImages[] = {{IDC_PASTE, IDI_PASTE},
                                        {IDC_COPY, IDI_COPY},
                                        {IDC_VIRUSTOTAL, IDI_LOOK_UP_ONLINE},
                                        {IDC_OPEN_FOLDER, IDI_OPEN_FOLDER}};

ImageList MakeImageList(int size) {
  return ImageList(ImageList_Create(size, size, ILC_COLOR32, 0, std::size(toolbarButtons)));
}

void AddIcon(const ImageList& list, const Icon& icon) {
  if (icon) ImageList_AddIcon(list.Get(), icon.Get());
}

// One icon for each state of a push button (numbered as in the visual styles), all the same except
// the disabled one.
ImageList MakeButtonImages(int id, int size) {
  ImageList list = MakeImageList(size);
  const Icon icon = LoadScaledIcon(id, size);
  const Icon disabled = MakeDisabledIcon(icon);
  for (int state = PBS_NORMAL; state <= PBS_DEFAULTED_ANIMATING; ++state) {
    AddIcon(list, state == PBS_DISABLED ? disabled : icon);
  }
  return list;
}

}  // namespace

void Toolbar::Create(HWND dialog, int dpi) {
  dialog_ = dialog;
  const HWND placeholder = GetDlgItem(dialog, IDC_TOOLBAR);
  RECT rect;
  GetWindowRect(placeholder, &rect);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
  DestroyWindow(placeholder);

  toolbar_ =
      CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_LIST | TBSTYLE_FLAT |
                          TBSTYLE_TOOLTIPS | CCS_NODIVIDER | CCS_NOPARENTALIGN | CCS_NORESIZE,
                      rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, dialog,
                      reinterpret_cast<HMENU>(static_cast<intptr_t>(IDC_TOOLBAR)),
                      GetModuleHandleW(nullptr), nullptr);
  // A control created last would be last in the tab and reading order; the toolbar must be first.
  SetWindowPos(toolbar_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageW(toolbar_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DOUBLEBUFFER);
  LoadImages(dpi);

  int image = 0;
  for (const ToolbarButton& button : toolbarButtons) {
    TBBUTTON item = {};
    if (button.command == 0) {
      item.fsStyle = BTNS_SEP;
    } else {
      item.iBitmap = image++;
      item.idCommand = button.command;
      item.fsState = TBSTATE_ENABLED;
      item.fsStyle = BTNS_AUTOSIZE;
      item.iString = reinterpret_cast<INT_PTR>(button.label);
    }
    SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&item));
  }
  Position();
}

void Toolbar::LoadImages(int dpi) {
  const int size = ScaleToDpi(16, dpi);
  ImageList images = MakeImageList(size);
  for (const ToolbarButton& button : toolbarButtons) {
    if (button.command == 0) continue;
    AddIcon(images, LoadScaledIcon(button.icon, size));
  }
  SendMessageW(toolbar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.Get()));
  images_ = std::move(images);
  SendMessageW(toolbar_, WM_SETFONT, static_cast<WPARAM>(SendMessageW(dialog_, WM_GETFONT, 0, 0)),
               FALSE);
  SendMessageW(toolbar_, TB_AUTOSIZE, 0, 0);
  LoadButtonImages(dpi, size);
}

void Toolbar::LoadButtonImages(int dpi, int size) {
  std::vector<ImageList> made;
  for (const ButtonImage& button : buttonImages) {
    ImageList list = MakeButtonImages(button.icon, size);
    BUTTON_IMAGELIST images = {
        list.Get(), {ScaleToDpi(3, dpi), 0, ScaleToDpi(4, dpi), 0}, BUTTON_IMAGELIST_ALIGN_LEFT};
    SendDlgItemMessageW(dialog_, button.control, BCM_SETIMAGELIST, 0,
                        reinterpret_cast<LPARAM>(&images));
    made.push_back(std::move(list));
  }
  // The old image lists can be freed only now that no button uses them.
  buttonImages_ = std::move(made);
}

void Toolbar::DestroyButtonImages() { buttonImages_.clear(); }

void Toolbar::Position() {
  RECT place = {3, 1, 3, 17};
  MapDialogRect(dialog_, &place);
  RECT client;
  GetClientRect(dialog_, &client);
  const auto buttonSize = static_cast<DWORD>(SendMessageW(toolbar_, TB_GETBUTTONSIZE, 0, 0));
  const int height = std::max<int>(place.bottom - place.top, HIWORD(buttonSize));
  SetWindowPos(toolbar_, nullptr, place.left, place.top, client.right - 2 * place.left, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void Toolbar::FillTip(NMTBGETINFOTIPW& request) {
  const auto button = std::ranges::find(toolbarButtons, request.iItem, &ToolbarButton::command);
  if (button == std::end(toolbarButtons) || button->tip == nullptr || request.cchTextMax <= 0) {
    return;
  }
  const size_t length =
      std::min<size_t>(std::wcslen(button->tip), static_cast<size_t>(request.cchTextMax) - 1);
  std::copy_n(button->tip, length, request.pszText);
  request.pszText[length] = L'\0';
}

}  // namespace app
