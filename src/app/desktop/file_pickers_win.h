// The system's dialogs for choosing files and folders.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/desktop/pickers.h"

namespace app {

class FilePickers final : public Pickers {
 public:
  // The window that the dialogs open over.
  void Attach(HWND owner) { owner_ = owner; }

  std::vector<std::u16string> PickFiles(const std::u16string& title,
                                        const std::vector<FileFilter>& filters) override;
  std::vector<std::u16string> PickFolder(const std::u16string& title) override;
  std::optional<SaveTarget> PickSaveTarget(const SaveRequest& request) override;

 private:
  HWND owner_ = nullptr;
};

}  // namespace app
