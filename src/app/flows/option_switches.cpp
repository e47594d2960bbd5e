#include "app/flows/option_switches.h"

namespace app {

void OptionSwitches::ToggleUppercase() {
  options_.uppercase = !options_.uppercase;
  list_.RedrawRows();
  details_.Refresh();
  menu_.Show();
}

void OptionSwitches::ToggleShowLegacy() {
  options_.showLegacy = !options_.showLegacy;
  if (!options_.showLegacy && (options_.algorithms & swr::LegacyAlgoMask) != 0) {
    algorithms_.Select(options_.algorithms & ~swr::LegacyAlgoMask);
  }
  menu_.Show();
}

void OptionSwitches::ToggleIncludeHidden() {
  options_.includeHidden = !options_.includeHidden;
  menu_.Show();
}

void OptionSwitches::ToggleCrLf() {
  options_.crLf = !options_.crLf;
  menu_.Show();
}

}  // namespace app
