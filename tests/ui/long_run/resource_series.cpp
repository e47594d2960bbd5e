#include "tests/ui/long_run/resource_series.h"

#include <algorithm>

namespace app::testing {
namespace {

struct Resource {
  const char* name;
  uint64_t ResourceSample::*value;
  // What there may be more late than early, for what the system's libraries still cache (they hold
  // about ten drawing objects more once every dialog was open at every DPI).
  uint64_t tolerance;
  // What there may be more after the last samples, which is less than one for each of them.
  uint64_t steadyTolerance;
};

constexpr uint64_t MiB = uint64_t{1} << 20;
constexpr uint64_t AnyNumber = UINT64_MAX / 2;
constexpr Resource resources[] = {
    {"handles", &ResourceSample::handles, 8, 2},
    {"GDI objects", &ResourceSample::gdiObjects, 16, 2},
    {"USER objects", &ResourceSample::userObjects, 8, 2},
    {"private bytes", &ResourceSample::privateBytes, 4 * MiB, MiB / 2},
    // Told, not judged: under Wine it holds pictures of windows, which stay for a while.
    {"working set", &ResourceSample::workingSet, AnyNumber, AnyNumber},
};

}  // namespace

ResourceSeries::Verdict ResourceSeries::Judge() const {
  if (samples_.size() < 2 * SteadySamples) return {.text = "too few samples to tell of growth\n"};
  const size_t warmUp = samples_.size() / 6;
  const size_t quarter = (samples_.size() - warmUp) / 4;
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
    const uint64_t steady = samples_[samples_.size() - SteadySamples].*resource.value;
    const uint64_t last = samples_.back().*resource.value;
    const bool grows =
        late > early + resource.tolerance || last > steady + resource.steadyTolerance;
    verdict.hasGrown = verdict.hasGrown || grows;
    verdict.text += std::string(resource.name) + ": " + std::to_string(early) + " early, " +
                    std::to_string(late) + " late; " + std::to_string(steady) + " to " +
                    std::to_string(last) + " in the end" + (grows ? ": GROWN" : "") + "\n";
  }
  return verdict;
}

}  // namespace app::testing
