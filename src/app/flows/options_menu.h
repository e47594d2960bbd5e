// Makes the main menu show the options, the state of the shell's entries and how the program was
// installed.
#pragma once

#include "app/flows/options.h"
#include "app/install/installation.h"
#include "app/screen/menu_view.h"

namespace app {

class OptionsMenu {
 public:
  // All must outlive the object.
  OptionsMenu(const Options& options, const Installation& installation, MenuView& view)
      : options_(options), installation_(installation), view_(view) {}

  // Adapts the menu to the kind of installation. Call once, at the start.
  void Prepare();
  // Updates the check marks to match the options and the shell's entries.
  void Show();

 private:
  const Options& options_;
  const Installation& installation_;
  MenuView& view_;
};

}  // namespace app
