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

  // The only way to change the selection; an empty one becomes SHA-256 alone. Columns follow, and
  // every row is hashed with what it lacks.
  void Select(swr::AlgoMask mask);
  // Selects or deselects the algorithm as its check box is now.
  void FollowBox(swr::AlgoId id);
  // Lets the user select or deselect one in the menu of all algorithms.
  void ChooseFromMenu();

 private:
  void SelectOne(swr::AlgoId id, bool isSelected);

  Uses uses_;
};

}  // namespace app
