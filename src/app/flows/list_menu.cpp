#include "app/flows/list_menu.h"

#include "resources/resource_ids.h"

namespace app {

ListMenu::ListMenu(const RowTable& rows, const Selection& selection, Commands& commands,
                   Copying& copying, PopupMenus& popups)
    : rows_(rows), selection_(selection), commands_(commands), copying_(copying), popups_(popups) {}

void ListMenu::Show(std::optional<ScreenPoint> at) {
  const RowIds selected = selection_.Ids();
  if (selected.empty()) return;
  const Row* single = selected.size() == 1 ? rows_.Find(selected.front()) : nullptr;
  const CommandState state = {
      .selectedRows = selected.size(),
      .singleRowFailed = single != nullptr && single->status == RowStatus::Failed};
  ListMenuEntries menu = {.canLookUp = IsCommandAvailable(ID_CTX_VIRUSTOTAL, state),
                          .canCompare = IsCommandAvailable(ID_CTX_COMPARE, state)};
  if (single != nullptr) menu.digests = PresentAlgos(*single, swr::AllAlgosMask);
  const std::optional<ListMenuChoice> choice = popups_.ChooseListCommand(menu, at);
  if (!choice) return;
  if (choice->digest) {
    copying_.CopyDigest(selected.front(), *choice->digest);
  } else {
    commands_.RunOn(choice->command, selected);
  }
}

}  // namespace app
