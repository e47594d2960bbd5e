// What the program holds of the system each time its list has been cleared, and whether that grows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace app::testing {

struct ResourceSample {
  uint64_t handles = 0;
  uint64_t gdiObjects = 0;
  uint64_t userObjects = 0;
  uint64_t workingSet = 0;    // bytes
  uint64_t privateBytes = 0;  // bytes
};

class ResourceSeries {
 public:
  void Add(const ResourceSample& sample) { samples_.push_back(sample); }
  size_t Count() const { return samples_.size(); }

  // Compares the medians of an early and a late quarter. The first samples do not count: until
  // everything was used once, the system's own libraries settle in. Fewer than twelve samples say
  // nothing.
  struct Verdict {
    std::string text;  // a line for each resource
    bool hasGrown = false;
  };
  Verdict Judge() const;

 private:
  std::vector<ResourceSample> samples_;
};

}  // namespace app::testing
