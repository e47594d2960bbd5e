// Verification: the lines of a checksum file become rows that know what their digests should be.
// The verdicts then follow from the rows like any others.
#pragma once

#include <string>
#include <vector>

#include "app/desktop/messages.h"
#include "app/desktop/pickers.h"
#include "app/flows/banners.h"
#include "app/flows/hashing.h"
#include "app/flows/refresh.h"
#include "app/rows/row_table.h"
#include "app/screen/list_view.h"
#include "swr/checksums/checksum_line.h"

namespace app {

class Verification {
 public:
  // All must outlive the object.
  Verification(RowTable& rows, Hashing& hashing, Banners& banners, Refresh& refresh, ListView& list,
               Messages& messages, Pickers& pickers);

  // Adds the files that the checksum file lists. A file that can't be read or holds no checksum is
  // reported in a message and leaves the list as it is.
  void VerifyFile(const std::u16string& path);
  void VerifyChosenFiles();

 private:
  void ReplaceRowsListedIn(const std::vector<swr::ChecksumLine>& lines,
                           const std::u16string& checksumFile);

  RowTable& rows_;
  Hashing& hashing_;
  Banners& banners_;
  Refresh& refresh_;
  ListView& list_;
  Messages& messages_;
  Pickers& pickers_;
};

}  // namespace app
