// What is kept from one run of the program to the next.
#pragma once

#include "app/desktop/settings_store.h"
#include "app/flows/list_columns.h"
#include "app/flows/options.h"
#include "app/screen/placement_view.h"

namespace app {

class SavedSettings {
 public:
  // All must outlive the object.
  SavedSettings(Options& options, ListColumns& columns, PlacementView& placement,
                SettingsStore& store)
      : options_(options), columns_(columns), placement_(placement), store_(store) {}

  // Missing and impossible values leave the defaults. To be called before anything is shown.
  void Read();
  // Moves the window to where it was. Its size must be final but for this. True when the window is
  // to be shown maximized.
  bool RestorePlacement();
  void Write();

 private:
  Options& options_;
  ListColumns& columns_;
  PlacementView& placement_;
  SettingsStore& store_;
};

}  // namespace app
