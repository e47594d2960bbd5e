#include "app/flows/details_pane.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/flows/commands.h"
#include "app/verdicts/details_text.h"
#include "resources/resource_ids.h"
#include "swr/provenance/zone_record.h"

namespace app {

DetailsPane::DetailsPane(RowTable& rows, const Selection& selection, const Options& options,
                         SignatureChecks& signatures, OriginReads& origins, DetailsView& view)
    : rows_(rows),
      selection_(selection),
      options_(options),
      signatures_(signatures),
      origins_(origins),
      view_(view) {}

void DetailsPane::Refresh() {
  // Those whose announcement failed, too.
  TakeLateOrigins();
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
  // The origin first: the check, which takes longer, would compete with it for processor and disk.
  if (!row.extras->zone && !row.originRequested) ReadOrigin(row);
  if (!row.extras->signature && !row.signatureRequested) StartSignatureCheck(row);
}

void DetailsPane::ReadOrigin(const Row& row) {
  const std::optional<swr::ZoneRecord> zone = origins_.ReadOrigin(row.id, row.Path());
  rows_.Update(row.id, [&](RowState& state) {
    if (zone) {
      state.extras.Make().zone = zone;
    } else {
      state.originRequested = true;
    }
  });
}

void DetailsPane::StartSignatureCheck(const Row& row) {
  const bool isStarted = signatures_.StartSignatureCheck(row.id, row.Path());
  rows_.Update(row.id, [&](RowState& state) {
    if (isStarted) {
      state.signatureRequested = true;
    } else {
      state.extras.Make().signature = swr::SignatureResult{.state = swr::SignatureState::Unknown};
    }
  });
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

void DetailsPane::OnOriginsRead() {
  const auto hasOrigin = [](const Row* row) {
    return row != nullptr && row->extras->zone && row->extras->zone->found;
  };
  const Row* shown = selection_.SingleRow();
  const bool hadOrigin = hasOrigin(shown);
  TakeLateOrigins();
  if (hasOrigin(shown) && !hadOrigin) Refresh();
}

void DetailsPane::TakeLateOrigins() {
  for (RowOrigin& origin : origins_.TakeLateOrigins()) {
    // Does nothing if the row was removed meanwhile.
    rows_.Update(origin.rowId, [&](RowState& state) {
      state.extras.Make().zone = std::move(origin.record);
      state.originRequested = false;
    });
  }
}

}  // namespace app
