// What the main menu shows of the options, of the shell's entries and of how the program was
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

  // Adapts the menu to the kind of installation. To be called once, at the start.
  void Prepare();
  // Brings the menu in line with the options and with the shell's entries.
  void Show();

 private:
  const Options& options_;
  const Installation& installation_;
  MenuView& view_;
};

}  // namespace app
