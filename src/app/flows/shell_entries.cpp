#include "app/flows/shell_entries.h"

#include "app/screen/link_ids.h"

namespace app {

// An entry that starts another copy is treated as off: turning it on replaces it.
void ShellEntries::ToggleExplorerMenu() {
  const bool enable = installation_.GetExplorerState() != ExplorerState::ThisCopy;
  if (!installation_.SetExplorerMenu(enable)) {
    ReportFailure();
  } else if (enable) {
    messages_.ShowTaskDialog(MessageDialog(
        TaskDialogIcon::Information,
        u"\"Calculate checksums\" is now in the Explorer menu of files and folders.",
        u"On Windows 11 it's under \"Show more options\". It points at this copy of the program. "
        u"If you move the program, Sumwright offers to update the entry."));
  }
  menu_.Show();
}

void ShellEntries::ToggleSendTo() {
  const bool enable = installation_.GetSendToState() != SendToState::ThisCopy;
  if (!installation_.SetSendToLink(enable)) ReportFailure();
  menu_.Show();
}

void ShellEntries::ReportFailure() {
  messages_.ShowTaskDialog(
      MessageDialog(TaskDialogIcon::Error, u"The Explorer menu couldn't be changed."));
}

void ShellEntries::OfferRepair() {
  if (installation_.IsPackaged()) return;
  if (installation_.GetExplorerState() != ExplorerState::Stale &&
      installation_.GetSendToState() != SendToState::Stale) {
    return;
  }
  banners_.Show(BannerKind::StaleExplorer,
                u"The Explorer menu entries point at a copy of Sumwright that no longer exists.  " +
                    LinkMarkup(AcceptLink, u"Use this copy") + u"    " +
                    LinkMarkup(RejectLink, u"Remove them") + u"    " +
                    LinkMarkup(DismissLink, u"Dismiss"),
                {});
}

void ShellEntries::Repair(bool enable) {
  // Both are read before either changes.
  const ExplorerState explorer = installation_.GetExplorerState();
  const SendToState sendTo = installation_.GetSendToState();
  if (explorer == ExplorerState::Stale) installation_.SetExplorerMenu(enable);
  if (sendTo == SendToState::Stale) installation_.SetSendToLink(enable);
}

}  // namespace app
