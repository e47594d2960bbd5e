#include "app/flows/options_menu.h"

#include "app/flows/commands.h"
#include "resources/resource_ids.h"

namespace app {

void OptionsMenu::Prepare() {
  if (installation_.IsPackaged()) view_.RemoveShellEntryCommands();
  Show();
  if (!installation_.IsInstalledCopy()) {
    view_.SetProgramFolderText(u"Get the &Setup (Explorer Menu, Start Menu)...");
  }
}

void OptionsMenu::Show() {
  OptionChecks checks = {
      options_.uppercase, options_.showLegacy, options_.includeHidden, options_.crLf, {}};
  if (!installation_.IsPackaged()) {
    const ExplorerState explorer = installation_.GetExplorerState();
    const CommandState state = {.explorerMenuIsMachineWide =
                                    explorer == ExplorerState::MachineWide};
    checks.shellEntries = {.explorerMenu = explorer == ExplorerState::ThisCopy ||
                                           explorer == ExplorerState::MachineWide,
                           .canChangeExplorerMenu = IsCommandAvailable(ID_EXPLORER_MENU, state),
                           .sendTo = installation_.GetSendToState() == SendToState::ThisCopy};
  }
  view_.ShowOptions(checks);
}

}  // namespace app
