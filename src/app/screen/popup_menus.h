// Menus that open over the window and wait for a choice. Meanwhile the window keeps handling
// messages, so rows may be added, changed and removed.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "swr/hash/algorithms.h"

namespace app {

struct ScreenPoint {
  int32_t x = 0;
  int32_t y = 0;
};

// The parts of the list's context menu that depend on the selection.
struct ListMenuEntries {
  std::vector<swr::AlgoId> digests;  // of the one selected row, each with an entry to copy it
  bool canLookUp = false;
  bool canCompare = false;
};

struct ListMenuChoice {
  uint32_t command = 0;  // of resource_ids.h; meaningful without `digest`
  std::optional<swr::AlgoId> digest;
};

// Implemented by the dialog and by the tests. Called on the window's thread.
class PopupMenus {
 public:
  virtual ~PopupMenus() = default;

  // Shows the menu of all algorithms with those of `mask` checked. Nothing when none was chosen.
  virtual std::optional<swr::AlgoId> ChooseAlgo(swr::AlgoMask mask, bool withLegacy) = 0;
  // Shows the list's context menu at this point, or beside the focused row. Nothing when nothing
  // was chosen.
  virtual std::optional<ListMenuChoice> ChooseListCommand(const ListMenuEntries& menu,
                                                          std::optional<ScreenPoint> at) = 0;
};

}  // namespace app
