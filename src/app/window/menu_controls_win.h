// The main menu, and the check boxes and the button of the algorithms.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/screen/menu_view.h"

namespace app {

class MenuControls final : public MenuView {
 public:
  void Attach(HWND dialog) { dialog_ = dialog; }

  void ShowAlgoSelection(swr::AlgoMask mask, const std::u16string& moreText) override;
  bool IsAlgoChecked(swr::AlgoId id) const override;
  void ShowOptions(const OptionChecks& checks) override;
  void RemoveShellEntryCommands() override;
  void SetProgramFolderText(const std::u16string& text) override;

 private:
  HWND dialog_ = nullptr;
};

}  // namespace app
