// Handing a selected file on: its digest to a web page, its folder to the file manager.
#include <string>

#include "app/desktop/addresses.h"
#include "app/window/main_window.h"
#include "swr/hash/digest_text.h"

namespace app {
namespace {

constexpr swr::AlgoId LookUpAlgo = swr::AlgoId::Sha256;

}  // namespace

void MainWindow::LookUpOnVirusTotal() {
  ListRow* row = SingleSelectedRow();
  if (row == nullptr || row->status == RowStatus::Failed) return;
  if (row->digests[swr::IndexOf(LookUpAlgo)].present) {
    OpenVirusTotalPage(*row);
    return;
  }
  lookupRowId = row->id;
  lookupPending = true;
  QueueRow(*row, swr::MaskOf(LookUpAlgo));
  RepaintRow(row->id);
  UpdateStatusLine();
}

void MainWindow::FinishLookUp() {
  const ListRow* row = FindRow(lookupRowId);
  if (row == nullptr || row->status == RowStatus::Waiting || row->status == RowStatus::Hashing) {
    return;
  }
  lookupPending = false;
  OpenVirusTotalPage(*row);
}

// Only the digest leaves the machine.
void MainWindow::OpenVirusTotalPage(const ListRow& row) {
  const swr::DigestSlot& slot = row.digests[swr::IndexOf(LookUpAlgo)];
  if (!slot.present) return;
  desktop_.OpenAddress(std::u16string(VirusTotalFilePage) + swr::DigestToWideHex(slot, false));
}

}  // namespace app
