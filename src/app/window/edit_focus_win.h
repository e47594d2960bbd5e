// The editing keys in the main dialog.
#pragma once

#include "app/screen/edit_focus.h"
#include "app/window/list_control_win.h"

namespace app {

class DialogEditFocus final : public EditFocus {
 public:
  // The list must outlive the object.
  explicit DialogEditFocus(ListControl& list) : list_(list) {}

  bool PasteIntoFocusedEdit() override;
  bool CopyFromFocusedEdit() override;
  void SelectAll() override;

 private:
  ListControl& list_;
};

}  // namespace app
