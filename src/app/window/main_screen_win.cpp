#include "app/window/main_screen_win.h"

#include <vector>

#include "app/screen/link_ids.h"
#include "app/system/dpi_win.h"
#include "app/window/main_layout.h"
#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr int BannerGap = 3;  // pixels at 96 DPI

}  // namespace

MainScreen::MainScreen()
    : layout_(MainDialogControls, [this](std::vector<LayoutRect>& rects) {
        PlaceListUnderBanner(rects, banner_.Shows(), ScaleToDpi(BannerGap, dpi_));
      }) {}

void MainScreen::Attach(HWND dialog, int dpi) {
  dialog_ = dialog;
  dpi_ = dpi;
  list.Attach(GetDlgItem(dialog, IDC_LIST), dpi);
  expected.Attach(dialog, dpi);
  status.Attach(dialog);
  frame.Attach(dialog, dpi);
  banner_.Attach(dialog, [this] { ApplyLayout(); });
  details_.Attach(dialog);
  menu_.Attach(dialog);
  popups_.Attach(dialog, list);
  const std::u16string links = LinkMarkup(CommandLineToolLink, u"Command-line tool") + u"    " +
                               LinkMarkup(AboutLink, u"About");
  SetDlgItemTextW(dialog, IDC_LINKS, swr::AsWide(links));
  toolbar_.Create(dialog, dpi);
  layout_.Capture(dialog);
}

Screen MainScreen::Parts() {
  return {.list = list,
          .columns = list,
          .expected = expected,
          .banner = banner_,
          .details = details_,
          .status = status,
          .timer = frame,
          .menu = menu_,
          .popups = popups_,
          .edit = edit_,
          .placement = frame,
          .frame = frame};
}

void MainScreen::ChangeDpi(int dpi) {
  list.ChangeDpi(dpi);
  frame.ChangeDpi(dpi);
  dpi_ = dpi;
}

void MainScreen::Relayout() {
  expected.ChangeDpi(dpi_);
  toolbar_.LoadImages(dpi_);
  toolbar_.Position();
  layout_.Capture(dialog_);
  ApplyLayout();
}

}  // namespace app
