#include "swr/system/natural_order.h"

#include <array>
#include <numeric>
#include <span>

#include "swr/system/natural_key.h"
#include "swr/system/text_services.h"

namespace swr {
namespace {

constexpr char16_t FirstLongUnit = 0xFE;

// Units as bytes that compare like the units, none of which is zero: most units become one byte.
size_t PackedSize(std::u16string_view key) {
  size_t size = 0;
  for (const char16_t unit : key) size += unit < FirstLongUnit ? 1 : 4;
  return size;
}

void Pack(std::u16string_view key, size_t packedSize, char* bytes) {
  if (packedSize == key.size()) {  // as nearly always
    std::ranges::transform(key, bytes, [](char16_t unit) { return static_cast<char>(unit + 1); });
    return;
  }
  const auto put = [&](uint32_t value) { *bytes++ = static_cast<char>(value); };
  for (const uint32_t unit : key) {
    if (unit < FirstLongUnit) {
      put(unit + 1);
    } else {
      put(0xFF);
      put(1 + (unit >> 14));
      put(1 + (unit >> 7 & 0x7F));
      put(1 + (unit & 0x7F));
    }
  }
}

}  // namespace

NaturalOrder::Prefix NaturalOrder::Key::PrefixFrom(size_t depth) const {
  std::array<uint8_t, sizeof(Prefix)> next = {};
  std::copy_n(bytes + depth, std::min(next.size(), size - depth), next.begin());
  const auto number = [&](size_t first) {
    uint64_t value = 0;
    for (size_t i = 0; i < sizeof(uint64_t); ++i) value = value << 8 | next[first + i];
    return value;
  };
  return {.high = number(0), .low = number(sizeof(uint64_t))};
}

void NaturalOrder::Reserve(size_t count) {
  keys_.reserve(count);
  if (!NaturalKeysAreExact) texts_.reserve(count);
}

char* NaturalOrder::Take(size_t size) {
  size += size % alignof(char16_t);
  if (size > freeSize_) {
    constexpr size_t blockSize = 256 * 1024;
    freeSize_ = std::max(size, blockSize);
    // Not make_unique, which would fill it with zeros first.
    free_ = blocks_.emplace_back(new char[freeSize_]).get();
  }
  char* taken = free_;
  free_ += size;
  freeSize_ -= size;
  return taken;
}

void NaturalOrder::Add(std::u16string_view text) {
  key_.clear();
  AppendNaturalKey(text, key_);
  const size_t size = PackedSize(key_);
  char* bytes = Take(size);
  Pack(key_, size, bytes);
  keys_.push_back({bytes, size});
  if (NaturalKeysAreExact) return;
  auto* copy = reinterpret_cast<char16_t*>(Take((text.size() + 1) * sizeof(char16_t)));
  std::ranges::copy(text, copy);
  copy[text.size()] = u'\0';
  texts_.push_back(copy);
}

// Comparing two keys waits for memory twice, so each is read only once for every sixteen bytes: the
// first bytes lie beside the number and decide most comparisons; what they leave equal is sorted by
// the next.
void NaturalOrder::SortByKeys(std::vector<size_t>& order, bool descending) const {
  struct Entry {
    Prefix prefix;
    size_t number;
  };
  const auto ascends = [](const Entry& a, const Entry& b) {
    return a.prefix != b.prefix ? a.prefix < b.prefix : a.number < b.number;
  };
  const auto descends = [](const Entry& a, const Entry& b) {
    return a.prefix != b.prefix ? a.prefix > b.prefix : a.number < b.number;
  };
  // Entries from `first` to `last` that have the bytes before `depth` in common.
  struct Run {
    size_t first;
    size_t last;
    size_t depth;
  };
  std::vector<Entry> entries(order.size());
  for (size_t i = 0; i < entries.size(); ++i) entries[i].number = order[i];
  std::vector<Run> runs = {{0, entries.size(), 0}};
  while (!runs.empty()) {
    const Run run = runs.back();
    runs.pop_back();
    const std::span<Entry> part(entries.data() + run.first, run.last - run.first);
    for (Entry& entry : part) entry.prefix = keys_[entry.number].PrefixFrom(run.depth);
    if (descending) {
      if (!std::ranges::is_sorted(part, descends)) std::ranges::sort(part, descends);
    } else {
      if (!std::ranges::is_sorted(part, ascends)) std::ranges::sort(part, ascends);
    }
    for (size_t first = run.first; first < run.last;) {
      const Prefix prefix = entries[first].prefix;
      size_t last = first + 1;
      while (last < run.last && entries[last].prefix == prefix) ++last;
      const bool isWhole = (prefix.low & 0xFF) == 0;
      if (last - first > 1 && !isWhole) runs.push_back({first, last, run.depth + sizeof(Prefix)});
      first = last;
    }
  }
  for (size_t i = 0; i < entries.size(); ++i) order[i] = entries[i].number;
}

std::vector<size_t> NaturalOrder::Sorted(bool descending) const {
  std::vector<size_t> order(keys_.size());
  std::iota(order.begin(), order.end(), size_t{0});
  SortByKeys(order, descending);
  if (!NaturalKeysAreExact) {
    // The system's own comparison is expensive, but most neighbours are in its order by now.
    MergeSortedRuns(order, [&](size_t a, size_t b) {
      const int compared = SystemCompareNaturalTexts(texts_[a], texts_[b]);
      return compared != 0 ? (compared < 0) != descending : a < b;
    });
  }
  return order;
}

}  // namespace swr
