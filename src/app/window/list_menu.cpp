// The list's context menu.
#include "app/window/main_window.h"
#include "resources/resource_ids.h"
#include "swr/hash/digest_text.h"

namespace app {

void MainWindow::ShowListContextMenu(std::optional<ScreenPoint> at) {
  const std::vector<size_t> selected = SelectedIndexes();
  if (selected.empty()) return;
  const RowIds ids = IdsOf(selected);
  ListMenu menu;
  menu.canCompare = selected.size() == 2;
  if (selected.size() == 1) {
    const ListRow& row = *rows[selected.front()];
    menu.canLookUp = row.status != RowStatus::Failed;
    menu.digests = PresentAlgos(row, swr::AllAlgosMask);
  }
  const std::optional<ListMenuChoice> choice = view_.ChooseListCommand(menu, at);
  if (!choice) return;
  if (!choice->digest) {
    OnRowCommand(choice->command, ids);
  } else if (const ListRow* row = FindRow(ids.front())) {
    const swr::DigestSlot& slot = row->digests[swr::IndexOf(*choice->digest)];
    desktop_.WriteClipboardText(swr::DigestToWideHex(slot, uppercase));
  }
}

}  // namespace app
