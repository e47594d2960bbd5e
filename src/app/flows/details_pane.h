// The pane below the list: everything known about the selected file, or totals for several. The
// signature and the origin of a file are looked up when the file is first shown.
#pragma once

#include <cstdint>

#include "app/desktop/origin_reads.h"
#include "app/desktop/signature_checks.h"
#include "app/flows/options.h"
#include "app/flows/selection.h"
#include "app/rows/row_table.h"
#include "app/screen/details_view.h"
#include "swr/provenance/signature.h"

namespace app {

class DetailsPane {
 public:
  // All must outlive the object.
  DetailsPane(RowTable& rows, const Selection& selection, const Options& options,
              SignatureChecks& signatures, OriginReads& origins, DetailsView& view);

  // Call after every change of the selection or of a selected row.
  void Refresh();
  void OnSignatureResult(uint64_t rowId, const swr::SignatureResult& signature);
  // Call when late download origins can be taken.
  void OnOriginsRead();

 private:
  // Looks up the row's signature and origin, if that has not been done.
  void LookInto(const Row& row);
  void StartSignatureCheck(const Row& row);
  void ReadOrigin(const Row& row);
  // Stores the late origins in their rows.
  void TakeLateOrigins();

  RowTable& rows_;
  const Selection& selection_;
  const Options& options_;
  SignatureChecks& signatures_;
  OriginReads& origins_;
  DetailsView& view_;
};

}  // namespace app
