// The entries that start the program from Explorer's menu and from the Send To menu.
#pragma once

#include "app/desktop/messages.h"
#include "app/flows/banners.h"
#include "app/flows/options_menu.h"
#include "app/install/installation.h"

namespace app {

class ShellEntries {
 public:
  // All must outlive the object.
  ShellEntries(Installation& installation, OptionsMenu& menu, Banners& banners, Messages& messages)
      : installation_(installation), menu_(menu), banners_(banners), messages_(messages) {}

  // Turn the entry on or off.
  void ToggleExplorerMenu();
  void ToggleSendTo();
  // Offers to repair entries that start a copy that no longer exists. The last step of the start.
  void OfferRepair();
  // Makes such entries start this copy, or removes them.
  void Repair(bool enable);

 private:
  void ReportFailure();

  Installation& installation_;
  OptionsMenu& menu_;
  Banners& banners_;
  Messages& messages_;
};

}  // namespace app
