// Adds files and folders to the list: start-up arguments, drops, the Add commands and the paths
// from other instances.
#pragma once

#include <string>
#include <vector>

#include "app/desktop/pickers.h"
#include "app/flows/banners.h"
#include "app/flows/file_arrivals.h"
#include "app/flows/hashing.h"
#include "app/flows/options.h"
#include "app/rows/row_table.h"
#include "app/screen/list_view.h"

namespace app {

class Adding {
 public:
  // All must outlive the object.
  Adding(RowTable& rows, Hashing& hashing, const Options& options, Banners& banners,
         FileArrivals& arrivals, ListView& list, Pickers& pickers);

  // Adds files, and all files under folders, unless they are in the list already, and queues the
  // new ones. Files that are found at once are in the list when this returns.
  void AddPaths(const std::vector<std::u16string>& paths);
  void AddChosenFiles();
  void AddChosenFolder();

 private:
  RowTable& rows_;
  Hashing& hashing_;
  const Options& options_;
  Banners& banners_;
  FileArrivals& arrivals_;
  ListView& list_;
  Pickers& pickers_;
};

}  // namespace app
