// Paths for jobs that have no rows.
#pragma once

#include <deque>
#include <string_view>

#include "app/rows/shared_path.h"

namespace app::testing {

// Keeps the paths for as long as it exists.
class JobPaths {
 public:
  const SharedPath* Keep(std::u16string_view path) { return &paths_.emplace_back(path); }

 private:
  std::deque<SharedPath> paths_;
};

}  // namespace app::testing
