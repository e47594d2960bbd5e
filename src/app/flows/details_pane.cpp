#include "app/flows/details_pane.h"

#include <string>
#include <vector>

#include "app/flows/commands.h"
#include "app/verdicts/details_text.h"
#include "resources/resource_ids.h"
#include "swr/provenance/zone_record.h"

namespace app {

DetailsPane::DetailsPane(RowTable& rows, const Selection& selection, const Options& options,
                         SignatureChecks& signatures, DetailsView& view)
    : rows_(rows), selection_(selection), options_(options), signatures_(signatures), view_(view) {}

void DetailsPane::Refresh() {
  const std::vector<const Row*> selected = selection_.Rows();
  std::u16string text;
  if (selected.size() == 1) {
    LookInto(*selected.front());
    text = RowDetailsText(*selected.front(), options_.uppercase);
  } else if (!selected.empty()) {
    uint64_t totalSize = 0;
    for (const Row* row : selected) totalSize += row->size;
    text = SelectionText(selected.size(), totalSize);
  } else {
    text = NoSelectionText(rows_.Size());
  }
  const CommandState state = {
      .selectedRows = selected.size(),
      .singleRowFailed = selected.size() == 1 && selected.front()->status == RowStatus::Failed};
  view_.SetDetails(text, {.copyHashes = IsCommandAvailable(IDC_COPY, state),
                          .lookUpOnline = IsCommandAvailable(IDC_VIRUSTOTAL, state),
                          .openFolder = IsCommandAvailable(IDC_OPEN_FOLDER, state)});
}

void DetailsPane::LookInto(const Row& row) {
  if (row.status == RowStatus::Failed) return;
  if (!row.extras->signature && !row.signatureRequested) {
    rows_.Update(row.id, [](RowState& state) { state.signatureRequested = true; });
    signatures_.StartSignatureCheck(row.id, row.Path());
  }
  if (!row.extras->zone) {
    const swr::ZoneRecord zone = swr::ReadZoneRecord(row.Path());
    rows_.Update(row.id, [&](RowState& state) { state.extras.Make().zone = zone; });
  }
}

void DetailsPane::OnSignatureResult(uint64_t rowId, const swr::SignatureResult& signature) {
  const Row* row = rows_.Find(rowId);
  if (row == nullptr) return;  // removed meanwhile
  rows_.Update(rowId, [&](RowState& state) {
    state.extras.Make().signature = signature;
    state.signatureRequested = false;
  });
  if (row == selection_.SingleRow()) Refresh();
}

}  // namespace app
