// Simulates that the xxHash library runs out of memory. The linker redirects its allocation
// function to the one here (--wrap in the build).
#include <gtest/gtest.h>

#include <new>

#include "swr/hash/hasher.h"

struct XXH3_state_s;

namespace {

bool hasNoMemory = false;

}  // namespace

// These names are required by the linker option.
extern "C" XXH3_state_s* __real_XXH3_createState();
extern "C" XXH3_state_s* __wrap_XXH3_createState() {
  return hasNoMemory ? nullptr : __real_XXH3_createState();
}

namespace swr::testing {
namespace {

TEST(XxhashMemoryTest, ThrowsWhenThereIsNoMemoryForAState) {
  hasNoMemory = true;
  EXPECT_THROW(MakeHasher(AlgoId::Xxh3_64), std::bad_alloc);
  EXPECT_THROW(MakeHasher(AlgoId::Xxh128), std::bad_alloc);
  EXPECT_NO_THROW(MakeHasher(AlgoId::Xxh64));
  hasNoMemory = false;
  EXPECT_NO_THROW(MakeHasher(AlgoId::Xxh3_64));
}

}  // namespace
}  // namespace swr::testing
