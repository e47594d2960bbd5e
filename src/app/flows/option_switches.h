// The options that the menu turns on and off.
#pragma once

#include "app/flows/algorithm_selection.h"
#include "app/flows/details_pane.h"
#include "app/flows/options.h"
#include "app/flows/options_menu.h"
#include "app/screen/list_view.h"

namespace app {

class OptionSwitches {
 public:
  // All must outlive the object.
  OptionSwitches(Options& options, AlgorithmSelection& algorithms, DetailsPane& details,
                 OptionsMenu& menu, ListView& list)
      : options_(options), algorithms_(algorithms), details_(details), menu_(menu), list_(list) {}

  void ToggleUppercase();
  // Hiding the legacy algorithms deselects them.
  void ToggleShowLegacy();
  void ToggleIncludeHidden();
  void ToggleCrLf();

 private:
  Options& options_;
  AlgorithmSelection& algorithms_;
  DetailsPane& details_;
  OptionsMenu& menu_;
  ListView& list_;
};

}  // namespace app
