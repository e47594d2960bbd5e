// Parses checksum files. The first byte selects the file's name; the rest is its content.
#include <algorithm>
#include <array>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "swr/checksums/checksum_file.h"

namespace {

constexpr std::array<std::u16string_view, 8> fileNames = {
    u"C:\\lists\\checksums.txt",
    u"a.md5",
    u"a.sfv",
    u"SHA256SUMS.asc",
    u"/lists/a.xxh3",
    u"a.crc32",
    u"a.sha3-512",
    u"a.digests",
};

void RequireSound(const swr::ChecksumLine& line) {
  using fuzz::Require;
  Require(!line.candidates.empty(), "a line has candidates");
  for (const swr::AlgoId id : line.candidates) {
    Require(std::ranges::count(line.candidates, id) == 1, "a candidate occurs once");
    // A plain line with the XXH3 prefix is kept whatever its length; its verification fails.
    Require(line.digest.size() == swr::GetAlgo(id).digestSize || id == swr::AlgoId::Xxh3_64,
            "a digest has the length of its algorithm");
  }
}

void RequireNumbersInOrder(const swr::ChecksumSet& set, std::u16string_view text) {
  std::vector<uint32_t> numbers = set.skippedLines;
  fuzz::Require(std::ranges::is_sorted(numbers), "skipped lines are in order");
  uint32_t last = 0;
  for (const swr::ChecksumLine& line : set.lines) {
    fuzz::Require(line.lineNumber > last, "lines are in order");
    last = line.lineNumber;
    numbers.push_back(line.lineNumber);
  }
  std::ranges::sort(numbers);
  fuzz::Require(std::ranges::adjacent_find(numbers) == numbers.end(), "a line is reported once");
  const auto lines = 1 + std::ranges::count(text, u'\n');
  fuzz::Require(numbers.empty() || (numbers.front() >= 1 && numbers.back() <= lines),
                "a reported line exists");
}

void RequireLineEndsDoNotMatter(const swr::ChecksumSet& set, std::u16string_view text,
                                std::u16string_view path) {
  if (text.find(u'\r') != text.npos) return;
  std::u16string withReturns;
  for (const char16_t unit : text) {
    if (unit == u'\n') withReturns += u'\r';
    withReturns += unit;
  }
  const swr::ChecksumSet again = swr::ParseChecksumText(withReturns, path);
  fuzz::Require(again.lines == set.lines && again.skippedLines == set.skippedLines,
                "the kind of line end does not matter");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::u16string_view path = fileNames[data[0] % fileNames.size()];
  const std::u16string text = fuzz::TextOf(data + 1, size - 1);
  const swr::ChecksumSet set = swr::ParseChecksumText(text, path);
  for (const swr::ChecksumLine& line : set.lines) RequireSound(line);
  RequireNumbersInOrder(set, text);
  RequireLineEndsDoNotMatter(set, text, path);
  return 0;
}
