// Reads and writes the settings that are kept between runs.
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

  // Missing and invalid values leave the defaults. Call before anything is shown.
  void Read();
  // Moves the window to its last position and size. Call when its initial size is final. True when
  // the window must be shown maximized.
  bool RestorePlacement();
  void Write();

 private:
  Options& options_;
  ListColumns& columns_;
  PlacementView& placement_;
  SettingsStore& store_;
};

}  // namespace app
