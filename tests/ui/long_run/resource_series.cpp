#include "tests/ui/long_run/resource_series.h"

#include <algorithm>

namespace app::testing {
namespace {

struct Resource {
  const char* name;
  uint64_t ResourceSample::*value;
  // What it may be more in the end, for what is cached late. Wine's working set holds pictures of
  // windows, which come and go.
  uint64_t tolerance;
};

constexpr uint64_t MiB = uint64_t{1} << 20;
constexpr Resource resources[] = {
    {"handles", &ResourceSample::handles, 4},
    {"GDI objects", &ResourceSample::gdiObjects, 4},
    {"USER objects", &ResourceSample::userObjects, 4},
    {"working set", &ResourceSample::workingSet, 8 * MiB},
    {"private bytes", &ResourceSample::privateBytes, 3 * MiB},
};
constexpr size_t FewestSamples = 6;

}  // namespace

ResourceSeries::Verdict ResourceSeries::Judge() const {
  if (samples_.size() < FewestSamples) return {.text = "too few samples to tell of growth\n"};
  const size_t warmUp = samples_.size() / 6;
  const size_t quarter = std::max<size_t>(2, (samples_.size() - warmUp) / 4);
  Verdict verdict;
  for (const Resource& resource : resources) {
    const auto least = [&](size_t first) {
      uint64_t value = UINT64_MAX;
      for (size_t i = first; i < first + quarter; ++i) {
        value = std::min(value, samples_[i].*resource.value);
      }
      return value;
    };
    const uint64_t early = least(warmUp);
    const uint64_t late = least(samples_.size() - quarter);
    const bool grows = late > early + resource.tolerance;
    verdict.hasGrown = verdict.hasGrown || grows;
    verdict.text += std::string(resource.name) + ": " + std::to_string(early) + " early, " +
                    std::to_string(late) + " late" + (grows ? ": GROWN" : "") + "\n";
  }
  return verdict;
}

}  // namespace app::testing
