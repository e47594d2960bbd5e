// Checksums that are saved and read back.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "swr/checksums/checksum_file.h"
#include "swr/checksums/checksum_writer.h"
#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

class Source {
 public:
  explicit Source(unsigned seed) : engine_(seed) {}

  size_t Below(size_t limit) {
    return std::uniform_int_distribution<size_t>(0, limit - 1)(engine_);
  }

  // Any character but a carriage return, whose escape is not read.
  std::u16string Name() {
    static const std::vector<std::u16string> parts = {u"a",          u"Z",      u"0",
                                                      u"  ",         u" ",      u"\t",
                                                      u"\"",         u"'",      u",",
                                                      u";",          u"#",      u"(",
                                                      u") = ",       u" (",     u"=",
                                                      u"*",          u"\\",     u"\\n",
                                                      u"\n",         u"/",      u".",
                                                      u"-",          u"\u00E9", u"\u4E2D",
                                                      u"\U0001F600", u"MD5",    u"0123456789abcdef",
                                                      u"\uFEFF",     u"\u00A0"};
    std::u16string name;
    for (size_t i = 0, count = 1 + Below(8); i < count; ++i) name += parts[Below(parts.size())];
    return name;
  }

  ExportRow Row() {
    ExportRow row = {.name = Name(), .size = Below(1'000'000)};
    for (size_t i = 0; i < AlgoCount; ++i) {
      if (Below(3) != 0) continue;
      ExportDigest digest = {.algo = static_cast<AlgoId>(i)};
      digest.digest.length = static_cast<uint8_t>(GetAlgo(digest.algo).digestSize);
      for (uint8_t k = 0; k < digest.digest.length; ++k) {
        digest.digest.bytes[k] = static_cast<uint8_t>(Below(256));
      }
      row.digests.push_back(digest);
    }
    return row;
  }

 private:
  std::mt19937 engine_;
};

struct Listed {
  std::u16string name;
  std::vector<uint8_t> digest;
  AlgoId algo;

  bool operator==(const Listed&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Listed& listed) {
  return out << WideToUtf8(GetAlgo(listed.algo).name) << " of \"" << WideToUtf8(listed.name) << '"';
}

std::vector<Listed> Read(const std::string& bytes, const std::u16string& path) {
  std::vector<Listed> listed;
  const ChecksumSet set = ParseChecksumText(DecodeTextBytes(bytes), path);
  EXPECT_TRUE(set.skippedLines.empty()) << bytes;
  for (const ChecksumLine& line : set.lines) {
    EXPECT_EQ(line.candidates.size(), 1u);
    listed.push_back({line.name, line.digest, line.candidates.front()});
  }
  return listed;
}

TEST(RoundTripTest, NamesAndDigestsAreReadBack) {
  Source source(20261121);
  for (int i = 0; i < 500; ++i) {
    std::vector<ExportRow> rows;
    for (size_t k = 0, count = source.Below(5); k < count; ++k) rows.push_back(source.Row());
    const bool crLf = source.Below(2) == 1;
    const bool uppercase = source.Below(2) == 1;

    std::vector<Listed> all;
    for (const ExportRow& row : rows) {
      for (const ExportDigest& digest : row.digests) {
        all.push_back(
            {row.name, {digest.digest.View().begin(), digest.digest.View().end()}, digest.algo});
      }
    }
    EXPECT_EQ(
        Read(RenderChecksums(
                 rows, {.format = ExportFormat::Tagged, .crLf = crLf, .uppercase = uppercase}),
             u"list.digests"),
        all);
    for (const AlgoInfo& algo : AllAlgos()) {
      std::vector<Listed> ofOne;
      std::ranges::copy_if(all, std::back_inserter(ofOne),
                           [&](const Listed& listed) { return listed.algo == algo.id; });
      EXPECT_EQ(Read(RenderChecksums(rows, {.format = ExportFormat::Sha256Sum,
                                            .crLf = crLf,
                                            .uppercase = uppercase,
                                            .algo = algo.id,
                                            .hasAlgo = true}),
                     u"list" + ExtensionForAlgo(algo.id)),
                ofOne);
    }
  }
}

TEST(RoundTripTest, SomeNamesAreReadBackChanged) {
  struct LossCase {
    const char* description;
    ExportFormat format;
    std::u16string path;
    std::u16string name;
    std::vector<std::u16string> readNames;
  };
  const LossCase cases[] = {
      {"a carriage return reads as its escape",
       ExportFormat::Tagged,
       u"a.digests",
       u"a\rb",
       {u"a\\rb"}},
      {"a name that looks like an SFV comment", ExportFormat::Sfv, u"a.sfv", u";a", {}},
      {"the same with the other comment character", ExportFormat::Sfv, u"a.sfv", u"#a", {}},
      {"blanks around a name in SFV", ExportFormat::Sfv, u"a.sfv", u" a  ", {u"a"}},
      {"a leading hyphen, as in signed text", ExportFormat::Sfv, u"a.sfv", u"- a", {u"a"}},
      {"a name that ends like an SFV line, in a file named for CRC32",
       ExportFormat::Sha256Sum,
       u"a.crc32",
       u"report 20261121",
       {u"00000000  report"}},
      {"SFV has no escapes to read", ExportFormat::Sfv, u"a.sfv", u"a\\nb", {u"a\\nb"}},
  };
  ExportDigest digest = {.algo = AlgoId::Crc32};
  digest.digest.length = 4;
  for (const LossCase& test : cases) {
    SCOPED_TRACE(test.description);
    std::vector<std::u16string> names;
    const std::string bytes =
        RenderChecksums({{.name = test.name, .digests = {digest}}}, {.format = test.format});
    for (const Listed& listed : Read(bytes, test.path)) names.push_back(listed.name);
    EXPECT_EQ(names, test.readNames);
  }
}

// It is read as a dash-escape, which leaves a line without a name.
TEST(RoundTripTest, ANameOfOneHyphenIsSkippedInSfv) {
  ExportDigest digest = {.algo = AlgoId::Crc32};
  digest.digest.length = 4;
  const std::string bytes =
      RenderChecksums({{.name = u"-", .digests = {digest}}}, {.format = ExportFormat::Sfv});
  const ChecksumSet set = ParseChecksumText(DecodeTextBytes(bytes), u"a.sfv");
  EXPECT_TRUE(set.lines.empty());
  EXPECT_EQ(set.skippedLines, std::vector<uint32_t>{2});
}

}  // namespace
}  // namespace swr::testing
