// Handing a file on: its digest to a web page, its folder to the file manager.
#include <optional>
#include <string>

#include "app/desktop/addresses.h"
#include "app/window/main_window.h"
#include "swr/hash/digest_text.h"

namespace app {
namespace {

constexpr swr::AlgoId LookUpAlgo = swr::AlgoId::Sha256;

// The address of the row's page. Only the digest leaves the machine.
std::optional<std::u16string> PageOf(const ListRow& row) {
  const swr::DigestSlot& slot = row.digests[swr::IndexOf(LookUpAlgo)];
  if (!slot.present) return std::nullopt;
  return std::u16string(VirusTotalFilePage) + swr::DigestToWideHex(slot, false);
}

}  // namespace

void MainWindow::LookUpOnVirusTotal(const RowIds& ids) {
  ListRow* row = ids.size() == 1 ? FindRow(ids.front()) : nullptr;
  if (row == nullptr || row->status == RowStatus::Failed) return;
  if (const auto page = PageOf(*row)) {
    desktop_.OpenAddress(*page);
    return;
  }
  lookupRowId = row->id;
  lookupPending = true;
  QueueRow(*row, swr::MaskOf(LookUpAlgo));
  RepaintRow(row->id);
  UpdateStatusLine();
}

std::optional<std::u16string> MainWindow::FinishLookUp() {
  const ListRow* row = FindRow(lookupRowId);
  if (row == nullptr || row->status == RowStatus::Waiting || row->status == RowStatus::Hashing) {
    return std::nullopt;
  }
  lookupPending = false;
  return PageOf(*row);
}

void MainWindow::OpenContainingFolder(const RowIds& ids) {
  const ListRow* row = ids.size() == 1 ? FindRow(ids.front()) : nullptr;
  if (row == nullptr) return;
  // The row can go while the file manager is asked.
  const std::u16string path = row->path;
  const std::u16string folder = row->folder;
  desktop_.ShowInFolder(path, folder);
}

}  // namespace app
