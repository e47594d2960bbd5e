// The main dialog's controls, as the interfaces that the flows use.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/layout/control_layout_win.h"
#include "app/screen/screen.h"
#include "app/window/banner_control_win.h"
#include "app/window/details_controls_win.h"
#include "app/window/dialog_frame_win.h"
#include "app/window/edit_focus_win.h"
#include "app/window/expected_controls_win.h"
#include "app/window/list_control_win.h"
#include "app/window/menu_controls_win.h"
#include "app/window/popup_menus_win.h"
#include "app/window/status_controls_win.h"
#include "app/window/toolbar_win.h"

namespace app {

class MainScreen {
 public:
  MainScreen();
  MainScreen(const MainScreen&) = delete;
  MainScreen& operator=(const MainScreen&) = delete;

  // Attaches the objects to the dialog's controls. Called while the dialog is being initialised.
  void Attach(HWND dialog, int dpi);
  Screen Parts();

  void ApplyLayout() const { layout_.Apply(dialog_); }
  // Scales the column widths and the minimum size. Relayout does the rest, once the window has its
  // new size.
  void ChangeDpi(int dpi);
  void Relayout();
  // Frees the icons of the push buttons. To be called when the window is destroyed.
  void ReleaseImages() { toolbar_.DestroyButtonImages(); }

  ListControl list;
  ExpectedControls expected;
  StatusControls status;
  DialogFrame frame;

 private:
  HWND dialog_ = nullptr;
  int dpi_ = 96;
  Toolbar toolbar_;
  BannerControl banner_;
  DetailsControls details_;
  MenuControls menu_;
  WindowPopupMenus popups_;
  DialogEditFocus edit_{list};
  ControlLayout layout_;
};

}  // namespace app
