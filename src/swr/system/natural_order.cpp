#include "swr/system/natural_order.h"

#include <array>
#include <compare>
#include <cstdint>
#include <memory>
#include <numeric>
#include <span>
#include <string_view>
#include <system_error>
#include <thread>

#include "swr/system/natural_key.h"
#include "swr/system/text_services.h"

namespace swr {
namespace {

// Sixteen bytes of a key, as numbers that compare like the bytes; zeros after its end.
struct KeyPart {
  uint64_t high = 0;
  uint64_t low = 0;
  friend auto operator<=>(const KeyPart&, const KeyPart&) = default;

  bool HasEnd() const { return (low & 0xFF) == 0; }
};

KeyPart MakeKeyPart(std::span<const char> bytes) {
  std::array<uint8_t, sizeof(KeyPart)> next = {};
  if (bytes.size() >= next.size()) {
    std::copy_n(bytes.begin(), next.size(), next.begin());
  } else {
    std::ranges::copy(bytes, next.begin());
  }
  const auto number = [&](size_t first) {
    uint64_t value = 0;
    for (size_t i = 0; i < sizeof(uint64_t); ++i) value = value << 8 | next[first + i];
    return value;
  };
  return {.high = number(0), .low = number(sizeof(uint64_t))};
}

// Gives out memory that lives as long as the object.
class MemoryBlocks {
 public:
  // Aligned for text.
  char* Take(size_t size) {
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

 private:
  std::vector<std::unique_ptr<char[]>> blocks_;
  char* free_ = nullptr;  // in the last block
  size_t freeSize_ = 0;
};

// Long lists are sorted on two threads, both of which call goesBefore.
template <typename Element, typename GoesBefore>
void SortOnTwoThreads(std::span<Element> elements, const GoesBefore& goesBefore) {
  if (std::ranges::is_sorted(elements, goesBefore)) return;
  constexpr size_t worthAThread = 16'384;
  const size_t middle = elements.size() / 2;
  std::thread other;
  if (middle >= worthAThread) {
    try {
      other = std::thread([=] { std::ranges::sort(elements.first(middle), goesBefore); });
    } catch (const std::system_error&) {  // too many threads
    }
  }
  if (!other.joinable()) {
    std::ranges::sort(elements, goesBefore);
    return;
  }
  std::ranges::sort(elements.subspan(middle), goesBefore);
  other.join();
  std::ranges::inplace_merge(elements, elements.begin() + static_cast<ptrdiff_t>(middle),
                             goesBefore);
}

// Most texts differ in the first bytes of their keys, and making a whole key can take longer than
// sorting it. So at first only these bytes are made, and whole keys where they are equal.
class NaturalSort {
 public:
  NaturalSort(size_t count, const NumberedText& textOf);
  std::vector<size_t> Sorted(bool descending);

 private:
  static constexpr size_t HeadParts = 2;
  static constexpr size_t HeadSize = HeadParts * sizeof(KeyPart);
  using Head = std::array<KeyPart, HeadParts>;

  struct Entry {
    KeyPart part;
    size_t number;
  };

  Head MakeHead(std::u16string_view text);
  const char16_t* CopyText(std::u16string_view text);
  void MakeWholeKey(size_t number);
  // The bytes of the key from `depth` on.
  KeyPart PartOf(size_t number, size_t depth) const;
  void SortByKeys(std::vector<size_t>& order, bool descending);

  const NumberedText& textOf_;
  std::vector<Head> heads_;
  std::vector<std::span<const char>> keys_;  // whole ones, where they were needed
  // Zero-terminated; only where keys are not exact.
  std::vector<const char16_t*> texts_;
  MemoryBlocks memory_;
  std::string buffer_;  // for the key of one text
};

NaturalSort::NaturalSort(size_t count, const NumberedText& textOf) : textOf_(textOf) {
  heads_.reserve(count);
  if (!NaturalKeysAreExact) texts_.reserve(count);
  for (size_t number = 0; number < count; ++number) {
    const std::u16string text = textOf(number);
    heads_.push_back(MakeHead(text));
    if (!NaturalKeysAreExact) texts_.push_back(CopyText(text));
  }
}

NaturalSort::Head NaturalSort::MakeHead(std::u16string_view text) {
  const std::span<const char> key = MakeNaturalKey(text, buffer_, HeadSize);
  Head head;
  for (size_t i = 0; i < HeadParts; ++i) {
    head[i] = MakeKeyPart(key.subspan(std::min(key.size(), i * sizeof(KeyPart))));
  }
  return head;
}

const char16_t* NaturalSort::CopyText(std::u16string_view text) {
  auto* copy = reinterpret_cast<char16_t*>(memory_.Take((text.size() + 1) * sizeof(char16_t)));
  *std::ranges::copy(text, copy).out = u'\0';
  return copy;
}

void NaturalSort::MakeWholeKey(size_t number) {
  const std::string_view key = MakeNaturalKey(textOf_(number), buffer_);
  char* bytes = memory_.Take(key.size());
  std::ranges::copy(key, bytes);
  keys_[number] = {bytes, key.size()};
}

KeyPart NaturalSort::PartOf(size_t number, size_t depth) const {
  return depth < HeadSize ? heads_[number][depth / sizeof(KeyPart)]
                          : MakeKeyPart(keys_[number].subspan(depth));
}

// Comparing two keys in memory costs two cache misses. So sixteen bytes of each key are copied next
// to its number; entries for which they are equal are sorted by the next sixteen.
void NaturalSort::SortByKeys(std::vector<size_t>& order, bool descending) {
  const auto ascends = [](const Entry& a, const Entry& b) {
    return a.part != b.part ? a.part < b.part : a.number < b.number;
  };
  const auto descends = [](const Entry& a, const Entry& b) {
    return a.part != b.part ? a.part > b.part : a.number < b.number;
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
    if (run.depth == HeadSize) {
      keys_.resize(order.size());
      for (const Entry& entry : part) MakeWholeKey(entry.number);
    }
    for (Entry& entry : part) entry.part = PartOf(entry.number, run.depth);
    if (descending) {
      SortOnTwoThreads(part, descends);
    } else {
      SortOnTwoThreads(part, ascends);
    }
    for (size_t first = run.first; first < run.last;) {
      const KeyPart same = entries[first].part;
      size_t last = first + 1;
      while (last < run.last && entries[last].part == same) ++last;
      if (last - first > 1 && !same.HasEnd()) {
        runs.push_back({first, last, run.depth + sizeof(KeyPart)});
      }
      first = last;
    }
  }
  for (size_t i = 0; i < entries.size(); ++i) order[i] = entries[i].number;
}

std::vector<size_t> NaturalSort::Sorted(bool descending) {
  std::vector<size_t> order(heads_.size());
  std::iota(order.begin(), order.end(), size_t{0});
  SortByKeys(order, descending);
  if (!NaturalKeysAreExact) {
    // The system's own comparison is expensive, but most neighbours are already in its order.
    MergeSortedRuns(order, [&](size_t a, size_t b) {
      const int compared = SystemCompareNaturalTexts(texts_[a], texts_[b]);
      return compared != 0 ? (compared < 0) != descending : a < b;
    });
  }
  return order;
}

}  // namespace

std::vector<size_t> SortNaturally(size_t count, const NumberedText& textOf, bool descending) {
  return NaturalSort(count, textOf).Sorted(descending);
}

}  // namespace swr
