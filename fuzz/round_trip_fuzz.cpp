// Saves checksums in the three formats that can be read, and reads them back. The only differences
// allowed are those listed in docs/formats.md.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <optional>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "swr/checksums/checksum_file.h"
#include "swr/checksums/checksum_writer.h"
#include "swr/text/text.h"

namespace {

using swr::AlgoId;

struct Listed {
  std::u16string name;
  std::vector<uint8_t> digest;
  std::vector<AlgoId> algos;

  bool operator==(const Listed&) const = default;
};

// Never empty, and without lone surrogates, which UTF-8 can't represent.
std::u16string MakeName(FuzzedDataProvider& input) {
  const std::u16string name = swr::Utf8ToWide(input.ConsumeRandomLengthString(40));
  return name.empty() ? u"x" : name;
}

std::vector<swr::ExportRow> MakeRows(FuzzedDataProvider& input) {
  std::vector<swr::ExportRow> rows(input.ConsumeIntegralInRange<size_t>(0, 4));
  for (swr::ExportRow& row : rows) {
    row.name = MakeName(input);
    for (const AlgoId id :
         swr::IdsFromMask(input.ConsumeIntegral<uint16_t>() & swr::AllAlgosMask)) {
      swr::ExportDigest digest = {.algo = id};
      digest.digest.length = static_cast<uint8_t>(swr::GetAlgo(id).digestSize);
      input.ConsumeData(digest.digest.bytes.data(), digest.digest.length);
      row.digests.push_back(digest);
    }
  }
  return rows;
}

// A carriage return is written as an escape that the reader does not know.
std::u16string NameReadBack(std::u16string name) {
  for (size_t at = 0; (at = name.find(u'\r', at)) != name.npos;) name.replace(at, 1, u"\\r");
  return name;
}

// SFV has neither escapes nor quotes: a name that looks like a comment is lost, as are blanks
// around a name and a leading "- ", which looks like the dash-escape of a clear-signed text.
std::optional<std::u16string> NameReadFromSfv(std::u16string_view name) {
  if (name == u"-") return std::nullopt;
  if (name.starts_with(u"- ")) name.remove_prefix(2);
  name.remove_prefix(std::min(name.find_first_not_of(u" \t"), name.size()));
  if (name.starts_with(u'#') || name.starts_with(u';')) return std::nullopt;
  name = swr::TrimText(name);
  if (name.empty()) return std::nullopt;
  return std::u16string(name);
}

// In a file named for CRC32 every line that ends like this is read as SFV.
bool EndsLikeSfv(std::u16string_view name) {
  const size_t blank = name.rfind(u' ');
  const std::u16string_view last = name.substr(blank == name.npos ? 0 : blank + 1);
  return last.size() == 8 && last.find_first_not_of(u"0123456789abcdefABCDEF") == last.npos;
}

std::vector<Listed> Read(const std::string& bytes, std::u16string_view path) {
  std::vector<Listed> listed;
  for (const swr::ChecksumLine& line :
       swr::ParseChecksumText(swr::DecodeTextBytes(bytes), path).lines) {
    listed.push_back({line.name, line.digest, line.candidates});
  }
  return listed;
}

void RequireRoundTrip(const std::vector<swr::ExportRow>& rows, const swr::ExportOptions& options,
                      std::u16string_view path) {
  std::vector<Listed> expected;
  for (const swr::ExportRow& row : rows) {
    for (const swr::ExportDigest& digest : row.digests) {
      if (options.hasAlgo && digest.algo != options.algo) continue;
      const std::optional<std::u16string> name = options.format == swr::ExportFormat::Sfv
                                                     ? NameReadFromSfv(row.name)
                                                     : NameReadBack(row.name);
      if (!name) continue;
      expected.push_back(
          {*name, {digest.digest.View().begin(), digest.digest.View().end()}, {digest.algo}});
    }
  }
  const std::string saved = swr::RenderChecksums(rows, options);
  const bool isReadBack = Read(saved, path) == expected;
  if (!isReadBack) std::fwrite(saved.data(), 1, saved.size(), stderr);
  fuzz::Require(isReadBack, "checksums are read back as they were saved");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider input(data, size);
  swr::ExportOptions options = {.crLf = input.ConsumeBool(), .uppercase = input.ConsumeBool()};
  std::vector<swr::ExportRow> rows = MakeRows(input);

  options.format = swr::ExportFormat::Tagged;
  RequireRoundTrip(rows, options, u"list.digests");
  options.format = swr::ExportFormat::Sha256Sum;
  options.hasAlgo = true;
  for (const swr::AlgoInfo& algo : swr::AllAlgos()) {
    options.algo = algo.id;
    std::vector<swr::ExportRow> saved = rows;
    if (algo.id == AlgoId::Crc32) {
      std::erase_if(saved, [](const swr::ExportRow& row) { return EndsLikeSfv(row.name); });
    }
    RequireRoundTrip(saved, options, u"list" + swr::ExtensionForAlgo(algo.id));
  }
  // SFV can't represent a line end in a name.
  for (swr::ExportRow& row : rows) {
    std::ranges::replace_if(
        row.name, [](char16_t unit) { return unit == u'\n' || unit == u'\r'; }, u'_');
  }
  options.format = swr::ExportFormat::Sfv;
  options.algo = AlgoId::Crc32;
  RequireRoundTrip(rows, options, u"list.sfv");
  return 0;
}
