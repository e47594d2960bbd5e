#include "swr/checksums/checksum_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "swr/text/encoding.h"
#include "tests/swr/checksums/hash_text_rows.h"

namespace swr::testing {
namespace {

// --- Names --------------------------------------------------------------------------------------

struct NameCase {
  std::u16string_view path;
  std::optional<AlgoId> algo;
  bool isChecksumFile;
};

constexpr std::optional<AlgoId> None;

const NameCase nameCases[] = {
    // Each extension.
    {u"a.md5", AlgoId::Md5, true},
    {u"a.sha1", AlgoId::Sha1, true},
    {u"a.sha256", AlgoId::Sha256, true},
    {u"a.sha384", AlgoId::Sha384, true},
    {u"a.sha512", AlgoId::Sha512, true},
    {u"a.sha3-256", AlgoId::Sha3_256, true},
    {u"a.sha3-384", AlgoId::Sha3_384, true},
    {u"a.sha3-512", AlgoId::Sha3_512, true},
    {u"a.b3", AlgoId::Blake3, true},
    {u"a.blake3", AlgoId::Blake3, true},
    {u"a.sfv", AlgoId::Crc32, true},
    {u"a.crc32", AlgoId::Crc32, true},
    {u"a.xxh64", AlgoId::Xxh64, true},
    {u"a.xxh3", AlgoId::Xxh3_64, true},
    {u"a.xxh128", AlgoId::Xxh128, true},
    {u"a.md4", AlgoId::Md4, true},
    {u"a.md2", AlgoId::Md2, true},
    // Letter case, folders, a name that is only an extension.
    {u"A.MD5", AlgoId::Md5, true},
    {u".sha256", AlgoId::Sha256, true},
    {u"C:\\d.md5\\a", None, false},
    {u"C:\\d\\a.md5", AlgoId::Md5, true},
    {u"/d/a.md5", AlgoId::Md5, true},
    {u"setup.exe.sha256", AlgoId::Sha256, true},
    // One ignored suffix.
    {u"a.md5.txt", AlgoId::Md5, true},
    {u"a.sha256.asc", AlgoId::Sha256, true},
    {u"a.sha512.sig", AlgoId::Sha512, true},
    {u"a.sha256.txt.asc", None, false},
    {u"a.md5.bak", None, false},
    // Names that end in "sum" or "sums".
    {u"MD5SUMS", AlgoId::Md5, true},
    {u"SHA256SUMS", AlgoId::Sha256, true},
    {u"sha256sum.txt", AlgoId::Sha256, true},
    {u"SHA256SUMS.ASC", AlgoId::Sha256, true},
    {u"SHA512SUM", AlgoId::Sha512, true},
    {u"b3sums", AlgoId::Blake3, true},
    {u"sha3-256sums", AlgoId::Sha3_256, true},
    {u"sha_1sum", AlgoId::Sha1, true},
    {u"shasums", AlgoId::Sha1, true},
    {u"crc32sums", AlgoId::Crc32, true},
    {u"xxhsum", None, false},
    {u"sums", None, false},
    {u"sum", None, false},
    {u"my SHA256SUMS", None, false},
    {u"setup.iso.sha256sum", None, false},
    // Names without an algorithm.
    {u"checksums", None, true},
    {u"checksum", None, true},
    {u"checksums.txt", None, true},
    {u"Checksum.TXT", None, true},
    {u"digests", None, true},
    {u"a.digests", None, true},
    {u"a.CHECKSUMS", None, true},
    {u".checksums", None, true},
    {u"my checksums", None, false},
    {u"digests.txt", None, false},
    {u"checksum.asc", None, false},
    // Ordinary names.
    {u"a.txt", None, false},
    {u".txt", None, false},
    {u"a.asc", None, false},
    {u"a.csv", None, false},
    {u"a.json", None, false},
    {u"md5", None, false},
    {u"amd5", None, false},
    {u"", None, false},
    {u"C:\\", None, false},
};

TEST(ChecksumFileNameTest, IgnoresOneSuffixAtMost) {
  for (const std::u16string_view inner : {u".txt", u".asc", u".sig"}) {
    for (const std::u16string_view outer : {u".txt", u".asc", u".sig"}) {
      for (const std::u16string_view stem : {u"a.sha256", u"SHA256SUMS", u"md5sum", u"checksums"}) {
        const std::u16string name =
            std::u16string(stem) + std::u16string(inner) + std::u16string(outer);
        EXPECT_EQ(AlgoFromChecksumFileName(name), None) << WideToUtf8(name);
        EXPECT_FALSE(IsChecksumFileName(name)) << WideToUtf8(name);
      }
    }
  }
}

TEST(ChecksumFileNameTest, ImpliesTheAlgorithm) {
  for (const NameCase& test : nameCases) {
    EXPECT_EQ(AlgoFromChecksumFileName(test.path), test.algo) << WideToUtf8(test.path);
    EXPECT_EQ(IsChecksumFileName(test.path), test.isChecksumFile) << WideToUtf8(test.path);
  }
}

// --- Text ---------------------------------------------------------------------------------------

struct ExpectedLine {
  std::u16string name;
  uint32_t number;
  std::vector<AlgoId> candidates = ThirtyTwo;

  bool operator==(const ExpectedLine&) const = default;
};

std::ostream& operator<<(std::ostream& out, const ExpectedLine& line) {
  out << line.number << ": " << WideToUtf8(line.name);
  for (const AlgoId id : line.candidates) out << ' ' << WideToUtf8(GetAlgo(id).name);
  return out;
}

struct TextCase {
  const char* description;
  std::u16string text;
  std::vector<ExpectedLine> lines;
  std::vector<uint32_t> skipped;
  std::u16string path = u"list";
};

const std::u16string Hex = CountedHex(32);

const std::vector<TextCase>& TextCases() {
  static const std::vector<TextCase> cases = {
      {"nothing", u"", {}, {}},
      {"one line", Hex + u"  a\n", {{u"a", 1}}, {}},
      {"no line end at the end", Hex + u"  a\n" + Hex + u"  b", {{u"a", 1}, {u"b", 2}}, {}},
      {"CR LF", Hex + u"  a\r\n" + Hex + u"  b\r\n", {{u"a", 1}, {u"b", 2}}, {}},
      {"of CR CR LF, one CR is kept", Hex + u"  a\r\r\n", {{u"a\r", 1}}, {}},
      {"CR CR LF makes an SFV line unreadable",
       u"a 01020304\r\r\nb 01020304\r\n",
       {{u"b", 2, Four}},
       {1}},
      {"CR alone does not end a line",
       Hex + u"  a\r" + Hex + u"  b",
       {{u"a\r" + Hex + u"  b", 1}},
       {}},
      {"nothing but line ends", u"\n\n\n", {}, {}},
      {"blank lines are numbered", u"\n \t\n\r\n" + Hex + u"  a\n", {{u"a", 4}}, {}},
      {"comments are numbered", u"# a\n; b\n  # c\n" + Hex + u"  a", {{u"a", 4}}, {}},
      {"comments are not skipped lines", u"#\n;\n", {}, {}},
      {"leading blanks", u" \t" + Hex + u"  a", {{u"a", 1}}, {}},
      {"trailing blanks belong to the name", Hex + u"  a \n", {{u"a ", 1}}, {}},
      {"unreadable lines", u"one\ntwo\n\nthree", {}, {1, 2, 4}},
      {"a good line among unreadable ones", u"one\n" + Hex + u"  a\nthree\n", {{u"a", 2}}, {1, 3}},
      {"a byte-order mark on line 1 is removed", u"\uFEFF" + Hex + u"  a", {{u"a", 1}}, {}},
      {"a byte-order mark on line 2 is kept", u"\n\uFEFF" + Hex + u"  a", {}, {2}},
      {"only one byte-order mark is removed", u"\uFEFF\uFEFF" + Hex + u"  a", {}, {1}},
      {"the same name twice", Hex + u"  a\n" + Hex + u"  a\n", {{u"a", 1}, {u"a", 2}}, {}},
      {"all three forms",
       u"SHA256 (a) = " + Hex + u"\n" + Hex + u" *b\nc.txt 01020304\n",
       {{u"a", 1, {AlgoId::Sha256}}, {u"b", 2}, {u"c.txt", 3, Four}},
       {}},
      {"a dash-escape", u"- " + Hex + u"  a\n- # b\n-  \n", {{u"a", 1}}, {}},
      {"a dash-escape is not removed after a blank", u" - " + Hex + u"  a", {}, {1}},
      {"a dash-escape is removed once", u"- - " + Hex + u"  a", {}, {1}},
      {"the file's name implies the algorithm",
       Hex + u"  a\n",
       {{u"a", 1, {AlgoId::Blake3}}},
       {},
       u"C:\\d\\list.b3"},
      {"the implied algorithm needs the right length",
       CountedHex(16) + u"  a",
       {{u"a", 1, Sixteen}},
       {},
       u"list.sha256"},
      {"two words with the form of a CRC32 in an SFV file",
       u"01020304 01020304",
       {{u"01020304", 1, Four}},
       {},
       u"list.sfv"},
      {"a plain line in an SFV file", Hex + u"  a", {{u"a", 1}}, {}, u"list.sfv"},
      {"tagged lines of other algorithms are skipped",
       u"SHA224 (a) = " + CountedHex(28) + u"\nBLAKE2b (a) = " + CountedHex(64) + u"\nSM3 (a) = " +
           Hex,
       {},
       {1, 2, 3}},
      {"but read as SFV lines if the digest has eight digits",
       u"XXH32 (a) = 01020304\nCRC32C (b) = 01020304",
       {{u"XXH32 (a) =", 1, Four}, {u"CRC32C (b) =", 2, Four}},
       {}},
      {"POSIX cksum lines are skipped", u"3287646509 5 a\n907060870 5 b", {}, {1, 2}},
      {"but read as plain lines if the checksum has eight digits",
       u"12345678 5 a",
       {{u"5 a", 1, Four}},
       {}},
      {"the default output of openssl dgst is skipped", u"SHA2-256(a)= " + Hex, {}, {1}},
      {"SFV names that begin like comments are ignored",
       u"; a.txt 01020304\n#b 01020304",
       {},
       {},
       u"list.sfv"},
  };
  return cases;
}

std::vector<ExpectedLine> LinesOf(const ChecksumSet& set) {
  std::vector<ExpectedLine> lines;
  for (const ChecksumLine& line : set.lines) {
    lines.push_back({line.name, line.lineNumber, line.candidates});
  }
  return lines;
}

TEST(ChecksumTextTest, EachLineIsParsedOnItsOwn) {
  for (const TextCase& test : TextCases()) {
    SCOPED_TRACE(test.description);
    const ChecksumSet set = ParseChecksumText(test.text, test.path);
    EXPECT_EQ(LinesOf(set), test.lines);
    EXPECT_EQ(set.skippedLines, test.skipped);
  }
}

TEST(ChecksumTextTest, TheFileNameDecidesWhichOfTwoWordsIsTheDigest) {
  const std::u16string line = u"01020304 aabbccdd";
  ChecksumSet set = ParseChecksumText(line, u"a.sfv");
  ASSERT_EQ(set.lines.size(), 1u);
  EXPECT_EQ(set.lines[0].name, u"01020304");
  EXPECT_EQ(set.lines[0].digest, (std::vector<uint8_t>{0xAA, 0xBB, 0xCC, 0xDD}));
  set = ParseChecksumText(line, u"a.txt");
  ASSERT_EQ(set.lines.size(), 1u);
  EXPECT_EQ(set.lines[0].name, u"aabbccdd");
  EXPECT_EQ(set.lines[0].digest, CountedBytes(4));
}

// Each of these lines fits two forms; the name shows which one was used.
TEST(ChecksumTextTest, TheFormsAreTriedInOrder) {
  struct OrderCase {
    std::u16string_view line;
    std::u16string_view name;       // in most files
    std::u16string_view nameInSfv;  // in a file that is named for CRC32
  };
  const OrderCase cases[] = {
      {u"CRC32 (a) = 01020304", u"a", u"CRC32 (a) ="},                            // tagged or SFV
      {u"XXH3_64 (a) = 0102030405060708", u"a", u"a"},                            // tagged or plain
      {u"01020304 aabbccdd", u"aabbccdd", u"01020304"},                           // plain or SFV
      {u"XXH3_64 (a) = 01 01020304", u"(a) = 01 01020304", u"XXH3_64 (a) = 01"},  // plain or SFV
  };
  const auto nameIn = [](std::u16string_view line, std::u16string_view path) {
    const ChecksumSet set = ParseChecksumText(line, path);
    return set.lines.empty() ? std::string("none") : WideToUtf8(set.lines[0].name);
  };
  for (const OrderCase& test : cases) {
    for (const std::u16string_view path : {u"list", u"list.sha256", u"list.xxh3", u"SHA1SUMS"}) {
      EXPECT_EQ(nameIn(test.line, path), WideToUtf8(test.name)) << WideToUtf8(path);
    }
    for (const std::u16string_view path : {u"list.sfv", u"list.crc32", u"crc32sums.txt"}) {
      EXPECT_EQ(nameIn(test.line, path), WideToUtf8(test.nameInSfv)) << WideToUtf8(path);
    }
  }
}

TEST(ChecksumTextTest, SkipsThePartsOfAClearSignature) {
  const std::u16string begin = u"-----BEGIN PGP SIGNED MESSAGE-----\n";
  const std::u16string signature = u"-----BEGIN PGP SIGNATURE-----\n";
  const std::u16string end = u"-----END PGP SIGNATURE-----\n";
  const std::u16string line = Hex + u"  a\n";
  const TextCase cases[] = {
      {"the usual form",
       begin + u"Hash: SHA256\n\n" + line + signature + u"\niQIzBAEBCgAdFiEE\n=abcd\n" + end,
       {{u"a", 4}},
       {}},
      {"lines before and after the signed block",
       line + begin + u"Hash: SHA256\n\n" + line + signature + u"x\n" + end + line,
       {{u"a", 1}, {u"a", 5}, {u"a", 9}},
       {}},
      {"blanks around the delimiters", u" " + begin + u"\n" + line, {{u"a", 3}}, {}},
      {"a header of several lines",
       begin + u"Hash: SHA256\nComment: b\n \n" + line,
       {{u"a", 5}},
       {}},
      {"a signature without an end extends to the end of the file",
       signature + line + line,
       {},
       {}},
      {"a header without an end extends to the end of the file", begin + line + line, {}, {}},
      {"the delimiters are case-sensitive",
       u"-----Begin PGP Signature-----\n" + line,
       {{u"a", 2}},
       {1}},
      {"an end without a beginning is unreadable", end + line, {{u"a", 2}}, {1}},
      {"a dash-escape within", begin + u"\n- " + line, {{u"a", 3}}, {}},
  };
  for (const TextCase& test : cases) {
    SCOPED_TRACE(test.description);
    const ChecksumSet set = ParseChecksumText(test.text, test.path);
    EXPECT_EQ(LinesOf(set), test.lines);
    EXPECT_EQ(set.skippedLines, test.skipped);
  }
}

// Malicious texts that would take very long if any step were quadratic in the length of a line. The
// test passes if it ends within its time limit.
TEST(ChecksumTextTest, ParsesLongTextsInLinearTime) {
  const auto repeated = [](std::u16string_view part, size_t count) {
    std::u16string text;
    for (size_t i = 0; i < count; ++i) text += part;
    return text;
  };
  constexpr size_t many = 1'000'000;
  for (const std::u16string_view part :
       {u" (", u") = ", u"\\", u" ", u"a b ", u"- ", u"SHA256 (", u"00", u"\t \t"}) {
    const std::u16string text = repeated(part, many);
    EXPECT_LE(ParseChecksumText(text, u"list").lines.size(), 1u) << WideToUtf8(part);
    EXPECT_LE(ParseChecksumText(text, u"list.sfv").lines.size(), 1u) << WideToUtf8(part);
  }
  EXPECT_EQ(ParseChecksumText(repeated(u"x\n", many), u"list").skippedLines.size(), many);
  EXPECT_EQ(ParseChecksumText(repeated(u"\n", many) + Hex + u"  a", u"list").lines[0].lineNumber,
            many + 1);
}

}  // namespace
}  // namespace swr::testing
