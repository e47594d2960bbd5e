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

  // Two looks at growth. An early quarter of the samples is compared with a late one, by the least
  // of each: what is cached or not yet given back comes and goes, a leak raises the floor. The
  // first sixth does not count: until everything was used once, the system's own libraries settle
  // in. And in the last SteadySamples, between which the same was done again and again, nothing may
  // grow, but for a single step.
  static constexpr size_t SteadySamples = 5;
  struct Verdict {
    std::string text;  // a line for each resource
    bool hasGrown = false;
  };
  Verdict Evaluate() const;

 private:
  std::vector<ResourceSample> samples_;
};

}  // namespace app::testing
