// Parses checksum lists with the forms that only the command-line tool accepts. The first byte
// selects the list's name; the rest is its content.
#include <algorithm>
#include <array>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "swr/checksums/checksum_file.h"
#include "swr/checksums/more_list_forms.h"

namespace {

constexpr std::array<std::u16string_view, 8> fileNames = {
    u"C:\\lists\\checksums.txt", u"a.iso.md5",      u"a.sfv",   u"SHA256SUMS.asc",
    u"/lists/a.iso.sha256sum",   u"a.b.sha512.txt", u".sha256", u"a.digests",
};

void RequireSound(const swr::ChecksumLine& line) {
  using fuzz::Require;
  Require(!line.candidates.empty(), "a line has candidates");
  for (const swr::AlgoId id : line.candidates) {
    Require(std::ranges::count(line.candidates, id) == 1, "a candidate occurs once");
    Require(line.digest.size() == swr::GetAlgo(id).digestSize || id == swr::AlgoId::Xxh3_64,
            "a digest has the length of its algorithm");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::u16string_view path = fileNames[data[0] % fileNames.size()];
  const std::u16string text = fuzz::TextOf(data + 1, size - 1);
  swr::ChecksumLineReader usual(path);
  swr::ChecksumLineReader extended(path, swr::ListForms::Extended);
  std::u16string_view rest = text;
  while (!rest.empty()) {
    const size_t end = rest.find(u'\n');
    const std::u16string_view line = rest.substr(0, end);
    rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    swr::ChecksumLine first;
    swr::ChecksumLine second;
    const swr::LineKind usualKind = usual.Read(line, first);
    const swr::LineKind kind = extended.Read(line, second);
    if (kind == swr::LineKind::Checksum) {
      RequireSound(second);
      fuzz::Require(second.lineNumber == extended.LineNumber(), "a line has the right number");
    }
    // The extended forms only add lines. Some list names imply an algorithm for these forms only.
    fuzz::Require(usualKind == swr::LineKind::Skipped || usualKind == kind,
                  "no line of the usual forms is lost");
    if (usualKind == swr::LineKind::Checksum) {
      fuzz::Require(first.name == second.name && first.digest == second.digest,
                    "lines of the usual forms have the same meaning");
    }
  }
  return 0;
}
