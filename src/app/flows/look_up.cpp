#include "app/flows/look_up.h"

#include <string>

#include "app/desktop/addresses.h"
#include "swr/hash/digest_text.h"

namespace app {
namespace {

constexpr swr::AlgoId LookUpAlgo = swr::AlgoId::Sha256;

// The address of the row's page, once its digest is known. Only the digest leaves the machine.
std::optional<std::u16string> PageOf(const Row& row) {
  const swr::DigestSlot& slot = row.digests[swr::IndexOf(LookUpAlgo)];
  if (!slot.present) return std::nullopt;
  return std::u16string(VirusTotalFilePage) + swr::DigestToWideHex(slot, false);
}

}  // namespace

LookUp::LookUp(RowTable& rows, Hashing& hashing, ProgressDisplay& progress, ListView& list,
               Shell& shell)
    : rows_(rows), hashing_(hashing), progress_(progress), list_(list), shell_(shell) {}

void LookUp::Start(const RowIds& selection) {
  const Row* row = selection.size() == 1 ? rows_.Find(selection.front()) : nullptr;
  if (row == nullptr || row->status == RowStatus::Failed) return;
  if (const auto page = PageOf(*row)) {
    shell_.OpenAddress(*page);
    return;
  }
  waitsFor_ = row->id;
  hashing_.QueueRow(row->id, swr::MaskOf(LookUpAlgo));
  list_.RedrawRow(*rows_.IndexOf(row->id));
  progress_.Update();
}

std::optional<std::u16string> LookUp::Finish() {
  const Row* row = waitsFor_ ? rows_.Find(*waitsFor_) : nullptr;
  if (row == nullptr || row->status == RowStatus::Waiting || row->status == RowStatus::Hashing) {
    return std::nullopt;
  }
  waitsFor_.reset();
  return PageOf(*row);
}

}  // namespace app
