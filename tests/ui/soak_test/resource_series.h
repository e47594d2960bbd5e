// Detects growth of the system resources that the program holds after each clearing of its list.
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

  // Growth is measured in two ways. First, the minimum of an early quarter of the samples is
  // compared with that of a late quarter: caches come and go, but a leak raises the minimum. The
  // first sixth is ignored, because the system's own libraries fill their caches then. Second, over
  // the last SteadySamples, between which the same actions were repeated, nothing may grow except
  // by a single step.
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
