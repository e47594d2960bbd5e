// Which algorithms are selected.
#pragma once

#include "app/flows/hashing.h"
#include "app/flows/list_columns.h"
#include "app/flows/options.h"
#include "app/flows/refresh.h"
#include "app/flows/sorting.h"
#include "app/rows/row_table.h"
#include "app/screen/list_view.h"
#include "app/screen/menu_view.h"
#include "app/screen/popup_menus.h"
#include "swr/hash/algorithms.h"

namespace app {

class AlgorithmSelection {
 public:
  // All must outlive the object.
  struct Uses {
    const RowTable& rows;
    Options& options;
    Hashing& hashing;
    ListColumns& columns;
    Sorting& sorting;
    Refresh& refresh;
    ListView& list;
    MenuView& menu;
    PopupMenus& popups;
  };
  explicit AlgorithmSelection(const Uses& uses) : uses_(uses) {}

  // The only way to change the selection; an empty one becomes SHA-256. Updates the columns, and
  // queues the digests that rows lack.
  void Select(swr::AlgoMask mask);
  // Selects or deselects the algorithm according to its check box.
  void FollowBox(swr::AlgoId id);
  // Shows the menu of all algorithms, in which the user can select or deselect one.
  void ChooseFromMenu();

 private:
  void SelectOne(swr::AlgoId id, bool isSelected);

  Uses uses_;
};

}  // namespace app
