#include "swr/checksums/checksum_line.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "swr/text/encoding.h"
#include "tests/swr/checksums/hash_text_rows.h"

namespace swr {

void PrintTo(const ChecksumLine& line, std::ostream* out) {
  *out << '"' << WideToUtf8(line.name) << "\", " << line.digest.size() << " bytes, candidates";
  for (const AlgoId id : line.candidates) *out << ' ' << WideToUtf8(GetAlgo(id).name);
}

}  // namespace swr

namespace swr::testing {
namespace {

using Result = std::optional<ChecksumLine>;

const Result None = std::nullopt;

Result Line(std::u16string name, size_t bytes, std::vector<AlgoId> candidates) {
  return ChecksumLine{std::move(name), CountedBytes(bytes), std::move(candidates)};
}

struct LineCase {
  std::u16string line;
  Result result;
};

// A form that fails leaves the result unchanged.
const ChecksumLine Before = {u"before", {1, 2}, {AlgoId::Md2}, 77};

template <typename Parse>
void Check(const Parse& parse, const std::vector<LineCase>& cases) {
  for (const LineCase& test : cases) {
    SCOPED_TRACE(WideToUtf8(test.line));
    ChecksumLine line = Before;
    EXPECT_EQ(parse(test.line, line), test.result.has_value());
    ChecksumLine expected = test.result.value_or(Before);
    expected.lineNumber = Before.lineNumber;
    EXPECT_EQ(line, expected);
  }
}

const std::u16string Hex4 = CountedHex(4);
const std::u16string Hex8 = CountedHex(8);
const std::u16string Hex16 = CountedHex(16);
const std::u16string Hex32 = CountedHex(32);

TEST(TaggedLineTest, NamesItsAlgorithm) {
  Check(ParseTaggedLine,
        {
            {u"SHA256 (a.txt) = " + Hex32, Line(u"a.txt", 32, {AlgoId::Sha256})},
            {u"SHA256 (a.txt) = " + CountedHex(32, {}, true), Line(u"a.txt", 32, {AlgoId::Sha256})},
            {u"sha-256 (a) =  " + Hex32 + u" \t\r", Line(u"a", 32, {AlgoId::Sha256})},
            {u"SHA3-256 (a) = " + Hex32, Line(u"a", 32, {AlgoId::Sha3_256})},
            {u"XXH3 (a) = " + Hex8, Line(u"a", 8, {AlgoId::Xxh3_64})},
            {u"CRC32 (a) = " + Hex4, Line(u"a", 4, {AlgoId::Crc32})},
            {u"MD5 () = " + Hex16, Line(u"", 16, {AlgoId::Md5})},
            // The first " (" and the last ") = " delimit the name.
            {u"MD5 (a (b) = c) = " + Hex16, Line(u"a (b) = c", 16, {AlgoId::Md5})},
            {u"MD5 ( a ) = " + Hex16, Line(u" a ", 16, {AlgoId::Md5})},
            // Escapes are replaced only after a leading backslash.
            {u"\\MD5 (a\\nb\\\\c) = " + Hex16, Line(u"a\nb\\c", 16, {AlgoId::Md5})},
            {u"MD5 (a\\nb) = " + Hex16, Line(u"a\\nb", 16, {AlgoId::Md5})},
            {u"MD5 (a) = " + Hex32, None},
            {u"MD5 (a) = ", None},
            {u"MD5 (a) = " + Hex16 + u"0", None},
            {u"MD5 (a) = " + Hex16 + u" b", None},
            {u"MD5(a) = " + Hex16, None},
            {u"MD5 (a)= " + Hex16, None},
            {u"MD5 a = " + Hex16, None},
            {u"TIGER (a) = " + Hex16, None},
            {u"MD5 (= " + Hex16, None},
            {u") = MD5 (" + Hex16, None},
            {u"MD5 () =" + Hex16, None},
            {u"", None},
            {u"\\", None},
        });
}

TEST(PlainLineTest, TheNameIsTheRestOfTheLine) {
  const auto parse = [](std::u16string_view line, ChecksumLine& result) {
    return ParsePlainLine(line, std::nullopt, result);
  };
  Check(parse, {
                   {Hex32 + u"  a.txt", Line(u"a.txt", 32, ThirtyTwo)},
                   {Hex32 + u" *a.txt", Line(u"a.txt", 32, ThirtyTwo)},
                   {Hex32 + u" a.txt", Line(u"a.txt", 32, ThirtyTwo)},
                   {CountedHex(32, {}, true) + u"  a", Line(u"a", 32, ThirtyTwo)},
                   // Only one unit after the space is removed.
                   {Hex32 + u"   a", Line(u" a", 32, ThirtyTwo)},
                   {Hex32 + u" **a", Line(u"*a", 32, ThirtyTwo)},
                   {Hex32 + u"  *a", Line(u"*a", 32, ThirtyTwo)},
                   {Hex32 + u"  a b.txt  ", Line(u"a b.txt  ", 32, ThirtyTwo)},
                   {Hex32 + u"  a\r", Line(u"a\r", 32, ThirtyTwo)},
                   {Hex32 + u"  " + Hex16, Line(Hex16, 32, ThirtyTwo)},
                   {Hex4 + u"  a", Line(u"a", 4, Four)},
                   {Hex8 + u"  a", Line(u"a", 8, Eight)},
                   {Hex16 + u"  a", Line(u"a", 16, Sixteen)},
                   {CountedHex(20) + u"  a", Line(u"a", 20, Twenty)},
                   {CountedHex(48) + u"  a", Line(u"a", 48, FortyEight)},
                   {CountedHex(64) + u"  a", Line(u"a", 64, SixtyFour)},
                   // Escapes.
                   {u"\\" + Hex32 + u"  a\\nb", Line(u"a\nb", 32, ThirtyTwo)},
                   {Hex32 + u"  a\\nb", Line(u"a\\nb", 32, ThirtyTwo)},
                   // XXH3, of any length.
                   {u"XXH3_" + Hex8 + u"  a", Line(u"a", 8, {AlgoId::Xxh3_64})},
                   {u"xxh3_" + Hex8 + u"  a", Line(u"a", 8, {AlgoId::Xxh3_64})},
                   {u"\\XXH3_" + Hex8 + u"  a\\\\b", Line(u"a\\b", 8, {AlgoId::Xxh3_64})},
                   {u"XXH3_" + CountedHex(2) + u"  a", Line(u"a", 2, {AlgoId::Xxh3_64})},
                   {u"XXH3_  a", None},
                   // Not of this form.
                   {Hex32, None},
                   {Hex32 + u" ", None},
                   {Hex32 + u"  ", None},
                   {Hex32 + u" *", None},
                   {Hex32 + u"\ta", None},
                   {CountedHex(2) + u" word", None},
                   {CountedHex(31) + u"  a", None},
                   {Hex32 + u"0  a", None},
                   {u"0x" + Hex32 + u"  a", None},
                   {CountedHex(32, u":") + u"  a", None},
                   {std::u16string(CountedBase64Of32) + u"  a", None},
                   {u" " + Hex32 + u"  a", None},
                   {u"words of a person", None},
                   {u"", None},
                   {u"\\", None},
                   {u" ", None},
               });
}

TEST(PlainLineTest, AHintIsUsedIfTheLengthFits) {
  struct HintCase {
    AlgoId hint;
    std::u16string token;
    std::vector<AlgoId> candidates;
  };
  const HintCase cases[] = {
      {AlgoId::Sha256, Hex32, {AlgoId::Sha256}},
      {AlgoId::Sha3_256, Hex32, {AlgoId::Sha3_256}},
      {AlgoId::Blake3, Hex32, {AlgoId::Blake3}},
      {AlgoId::Md4, Hex16, {AlgoId::Md4}},
      {AlgoId::Sha256, Hex16, Sixteen},
      {AlgoId::Md5, Hex32, ThirtyTwo},
      {AlgoId::Xxh64, u"XXH3_" + Hex8, {AlgoId::Xxh3_64}},
  };
  for (const HintCase& test : cases) {
    ChecksumLine line;
    ASSERT_TRUE(ParsePlainLine(test.token + u"  a", test.hint, line)) << WideToUtf8(test.token);
    EXPECT_EQ(line.candidates, test.candidates) << WideToUtf8(test.token);
  }
}

TEST(SfvLineTest, TheDigestComesLast) {
  Check(ParseSfvLine, {
                          {u"a.txt " + Hex4, Line(u"a.txt", 4, Four)},
                          {u"a.txt " + CountedHex(4, {}, true), Line(u"a.txt", 4, Four)},
                          {u"two words.txt   " + Hex4, Line(u"two words.txt", 4, Four)},
                          {u"a\\nb " + Hex4, Line(u"a\\nb", 4, Four)},
                          {Hex4 + u" " + Hex4, Line(Hex4, 4, Four)},
                          {u"\ta.txt\t " + Hex4, Line(u"a.txt", 4, Four)},
                          {u"a.txt " + Hex4 + u" ", None},
                          {u"a.txt " + Hex4 + u"\r", None},
                          {u"a.txt\t" + Hex4, None},
                          {u"a.txt " + Hex8, None},
                          {u"a.txt " + CountedHex(3), None},
                          {u" " + Hex4, None},
                          {u"\t " + Hex4, None},
                          {Hex4, None},
                          {u"a", None},
                          {u"", None},
                      });
}

TEST(UnescapeNameTest, ReplacesEscapedBackslashesAndLineFeeds) {
  struct EscapeCase {
    std::u16string_view text;
    std::u16string_view name;
  };
  const EscapeCase cases[] = {
      {u"", u""},           {u"plain", u"plain"},   {u"a\\nb", u"a\nb"},
      {u"a\\\\b", u"a\\b"}, {u"a\\\\nb", u"a\\nb"}, {u"\\\\\\n", u"\\\n"},
      {u"a\\tb", u"a\\tb"}, {u"a\\rb", u"a\\rb"},   {u"a\\", u"a\\"},
      {u"\\", u"\\"},       {u"\\N", u"\\N"},
  };
  for (const EscapeCase& test : cases) {
    EXPECT_EQ(UnescapeName(test.text), test.name) << WideToUtf8(test.text);
  }
}

}  // namespace
}  // namespace swr::testing
