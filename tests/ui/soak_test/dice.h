// Reproducible random numbers: every random choice of a soak test comes from one seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace app::testing {

class Dice {
 public:
  explicit Dice(uint32_t seed) : random_(seed) {}

  // A number below `count`, which is not 0. The standard library's distributions are not used:
  // their results for a seed are not specified.
  size_t Pick(size_t count) { return static_cast<size_t>(random_() % count); }
  bool OneIn(size_t count) { return Pick(count) == 0; }
  template <typename List>
  const auto& Of(const List& list) {
    return list[Pick(std::size(list))];
  }

 private:
  std::mt19937 random_;
};

}  // namespace app::testing
