// Verification: the lines of a checksum file become rows that know what their digests should be.
// The verdicts then follow from the rows like any others.
#pragma once

#include <string>

#include "app/desktop/pickers.h"
#include "app/flows/banners.h"
#include "app/flows/file_arrivals.h"
#include "app/flows/hashing.h"
#include "app/rows/row_table.h"
#include "app/screen/list_view.h"

namespace app {

class Verification {
 public:
  // All must outlive the object.
  Verification(RowTable& rows, Hashing& hashing, Banners& banners, FileArrivals& arrivals,
               ListView& list, Pickers& pickers);

  // Adds the files that the checksum file lists; those that are looked up at once are in the list
  // when this returns. A file that can't be read or has no checksums is reported in a message and
  // does not change the list.
  void VerifyFile(const std::u16string& path);
  void VerifyChosenFiles();

 private:
  RowTable& rows_;
  Hashing& hashing_;
  Banners& banners_;
  FileArrivals& arrivals_;
  ListView& list_;
  Pickers& pickers_;
};

}  // namespace app
