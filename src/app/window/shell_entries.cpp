// The entries that start the program from Explorer's menu and from the Send To menu, and what else
// depends on how this copy came to be where it is.
#include "app/desktop/addresses.h"
#include "app/dialogs/about.h"
#include "app/dialogs/command_line_tool.h"
#include "app/window/main_window.h"

namespace app {

void MainWindow::PrepareMenus() {
  if (installation_.IsPackaged()) view_.RemoveShellEntryCommands();
  ShowOptions();
  if (!installation_.IsInstalledCopy()) {
    view_.SetProgramFolderText(u"Get the &Setup (Explorer Menu, Start Menu)...");
  }
}

void MainWindow::ShowOptions() {
  OptionChecks checks = {uppercase, showLegacy, includeHidden, crLf, {}};
  if (!installation_.IsPackaged()) {
    const ExplorerState explorer = installation_.GetExplorerState();
    checks.shellEntries = {.explorerMenu = explorer == ExplorerState::ThisCopy ||
                                           explorer == ExplorerState::MachineWide,
                           .canChangeExplorerMenu = explorer != ExplorerState::MachineWide,
                           .sendTo = installation_.GetSendToState() == SendToState::ThisCopy};
  }
  view_.ShowOptions(checks);
}

void MainWindow::ToggleShellEntry(bool explorer) {
  // What starts another copy counts as off: turning it on takes it over.
  const bool enable = (explorer ? installation_.GetExplorerState()
                                : installation_.GetSendToState()) != ExplorerState::ThisCopy;
  const bool done =
      explorer ? installation_.SetExplorerMenu(enable) : installation_.SetSendToLink(enable);
  if (!done) {
    desktop_.ShowTaskDialog(
        MessageDialog(TaskDialogIcon::Error, u"The Explorer menu couldn't be changed."));
  } else if (explorer && enable) {
    desktop_.ShowTaskDialog(MessageDialog(
        TaskDialogIcon::Information,
        u"\"Calculate checksums\" is now in the Explorer menu of files and folders.",
        u"On Windows 11 it's under \"Show more options\". It points at this copy of the program. "
        u"If you move the program, Sumwright offers to update the entry."));
  }
  ShowOptions();
}

void MainWindow::OfferStaleEntryRepair() {
  if (installation_.IsPackaged()) return;
  if (installation_.GetExplorerState() != ExplorerState::Stale &&
      installation_.GetSendToState() != SendToState::Stale) {
    return;
  }
  ShowBanner(BannerKind::StaleExplorer,
             u"The Explorer menu entries point at a copy of Sumwright that no longer exists.  "
             u"<a id=\"a\">Use this copy</a>    <a id=\"r\">Remove them</a>    "
             u"<a id=\"x\">Dismiss</a>",
             {});
}

void MainWindow::RepairStaleEntries(bool enable) {
  // Both are read before either changes.
  const ExplorerState explorer = installation_.GetExplorerState();
  const SendToState sendTo = installation_.GetSendToState();
  if (explorer == ExplorerState::Stale) installation_.SetExplorerMenu(enable);
  if (sendTo == SendToState::Stale) installation_.SetSendToLink(enable);
}

void MainWindow::ShowAbout() {
  const char16_t* kind = installation_.IsInstalledCopy() ? u"Installed in " : u"Portable copy in ";
  desktop_.ShowTaskDialog(AboutDialog(kind + installation_.ProgramFolder()));
}

void MainWindow::ShowCommandLineTool() {
  const std::u16string folder = installation_.ProgramFolder();
  const bool isThere = installation_.HasCompanion(CommandLineToolFile);
  switch (desktop_.ShowTaskDialog(CommandLineToolDialog(isThere, folder))) {
    case OpenPromptAnswer:
      desktop_.OpenCommandPrompt(folder, u"swrhash --help");
      break;
    case OpenProgramFolderAnswer:
      desktop_.OpenFolder(folder);
      break;
    case GetToolAnswer:
      desktop_.OpenAddress(std::u16string(ProductPage));
      break;
    default:
      break;
  }
}

// An installed copy has its folder to show; a portable one has the setup to offer instead.
void MainWindow::OpenProgramFolder() {
  if (installation_.IsInstalledCopy()) {
    desktop_.OpenFolder(installation_.ProgramFolder());
  } else {
    desktop_.OpenAddress(std::u16string(ProductPage));
  }
}

}  // namespace app
