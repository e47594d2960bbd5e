#include "tests/support/allocation_peak.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace swr::testing {
namespace {

std::atomic<bool> counts = false;
std::atomic<size_t> held = 0;
std::atomic<size_t> peak = 0;

// The header of each block: whether and how it was counted.
struct alignas(std::max_align_t) Header {
  size_t size = 0;
  uint32_t period = 0;
};

std::atomic<uint32_t> countedPeriod = 0;

}  // namespace

AllocationPeak::AllocationPeak() {
  held = 0;
  peak = 0;
  ++countedPeriod;
  counts = true;
}

AllocationPeak::~AllocationPeak() { counts = false; }

size_t AllocationPeak::Bytes() const { return peak; }

}  // namespace swr::testing

void* operator new(size_t size) {
  using namespace swr::testing;
  auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
  if (header == nullptr) throw std::bad_alloc();
  header->size = size;
  header->period = 0;
  if (counts) {
    header->period = countedPeriod;
    const size_t now = held += size;
    size_t before = peak;
    while (now > before && !peak.compare_exchange_weak(before, now)) {
    }
  }
  return header + 1;
}

// Without it AddressSanitizer would supply one whose blocks the function below cannot free.
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* block) noexcept {
  using namespace swr::testing;
  if (block == nullptr) return;
  Header* header = static_cast<Header*>(block) - 1;
  if (counts && header->period == countedPeriod) held -= header->size;
  std::free(header);
}

void operator delete(void* block, size_t) noexcept { operator delete(block); }
