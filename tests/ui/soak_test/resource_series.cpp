#include "tests/ui/soak_test/resource_series.h"

#include <algorithm>

namespace app::testing {
namespace {

struct Resource {
  const char* name;
  uint64_t ResourceSample::*value;
  // The allowed growth from the early to the late samples, for caches of the system's libraries
  // (about ten GDI objects once every dialog was open at every DPI).
  uint64_t tolerance;
  // The same for a run of fewer than SettlingSamples.
  uint64_t settlingTolerance;
  // The allowed growth over the last samples, apart from their largest step. Less than one per
  // sample.
  uint64_t steadyTolerance;
};

constexpr uint64_t MiB = uint64_t{1} << 20;
constexpr uint64_t AnyNumber = UINT64_MAX / 2;
// About fifty minutes. Private memory rises in a few steps of about 6 MiB, probably by the system's
// heap, and then stays: in such a run before the early samples, but in the middle of a short one.
constexpr size_t SettlingSamples = 180;
constexpr Resource resources[] = {
    {"handles", &ResourceSample::handles, 8, 8, 2},
    {"GDI objects", &ResourceSample::gdiObjects, 16, 16, 2},
    {"USER objects", &ResourceSample::userObjects, 8, 8, 2},
    {"private bytes", &ResourceSample::privateBytes, 4 * MiB, 24 * MiB, MiB / 2},
    // Reported but not limited: under Wine it includes images of windows, which are kept for a
    // while.
    {"working set", &ResourceSample::workingSet, AnyNumber, AnyNumber, AnyNumber},
};

}  // namespace

ResourceSeries::Verdict ResourceSeries::Evaluate() const {
  if (samples_.size() < 2 * SteadySamples) return {.text = "too few samples to detect growth\n"};
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
    uint64_t largestStep = 0;
    for (size_t i = samples_.size() - SteadySamples + 1; i < samples_.size(); ++i) {
      const uint64_t before = samples_[i - 1].*resource.value;
      const uint64_t now = samples_[i].*resource.value;
      if (now > before) largestStep = std::max(largestStep, now - before);
    }
    const uint64_t tolerance =
        samples_.size() < SettlingSamples ? resource.settlingTolerance : resource.tolerance;
    const bool grows =
        late > early + tolerance || last > steady + largestStep + resource.steadyTolerance;
    verdict.hasGrown = verdict.hasGrown || grows;
    verdict.text += std::string(resource.name) + ": " + std::to_string(early) + " early, " +
                    std::to_string(late) + " late; " + std::to_string(steady) + " to " +
                    std::to_string(last) + " at the end" + (grows ? ": GROWN" : "") + "\n";
  }
  return verdict;
}

}  // namespace app::testing
