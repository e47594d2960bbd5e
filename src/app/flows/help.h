// The commands of the Help menu.
#pragma once

#include "app/desktop/messages.h"
#include "app/desktop/shell.h"
#include "app/install/installation.h"

namespace app {

class Help {
 public:
  // All must outlive the object.
  Help(const Installation& installation, Messages& messages, Shell& shell)
      : installation_(installation), messages_(messages), shell_(shell) {}

  void ShowAbout();
  void ShowCommandLineTool();
  // An installed copy opens its folder; a portable one offers the setup instead.
  void OpenProgramFolder();
  void OpenProductPage();
  void OpenMakerPage();

 private:
  const Installation& installation_;
  Messages& messages_;
  Shell& shell_;
};

}  // namespace app
