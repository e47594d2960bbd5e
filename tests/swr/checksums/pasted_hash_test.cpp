#include "swr/checksums/pasted_hash.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "swr/text/encoding.h"
#include "tests/swr/checksums/hash_text_rows.h"

namespace swr {

void PrintTo(const ParsedHash& hash, std::ostream* out) {
  *out << hash.digest.size() << " bytes, candidates";
  for (const AlgoId id : hash.candidates) *out << ' ' << WideToUtf8(GetAlgo(id).name);
  *out << (hash.explicitAlgo ? ", explicit" : "") << ", name \"" << WideToUtf8(hash.name) << '"';
}

}  // namespace swr

namespace swr::testing {
namespace {

using Result = std::optional<ParsedHash>;

const Result None = std::nullopt;

// CountedBytes without a named algorithm.
Result Bare(size_t bytes, const std::vector<AlgoId>& candidates, std::u16string name = {}) {
  return ParsedHash{CountedBytes(bytes), candidates, false, std::move(name)};
}
// CountedBytes of this algorithm.
Result Named(AlgoId algo, std::u16string name = {}) {
  return ParsedHash{CountedBytes(GetAlgo(algo).digestSize), {algo}, true, std::move(name)};
}

struct PasteCase {
  std::u16string text;
  Result box;        // in the Expected hash box
  Result clipboard;  // from the clipboard
};

void Check(const std::vector<PasteCase>& cases) {
  for (const PasteCase& test : cases) {
    SCOPED_TRACE(WideToUtf8(test.text));
    EXPECT_EQ(ParseExpectedHash(test.text), test.box);
    EXPECT_EQ(ParseClipboardHash(test.text), test.clipboard);
  }
}

PasteCase Both(std::u16string text, const Result& result) {
  return {std::move(text), result, result};
}
PasteCase BoxOnly(std::u16string text, const Result& result) {
  return {std::move(text), result, None};
}

const std::u16string Hex16 = CountedHex(16);
const std::u16string Hex32 = CountedHex(32);
const std::u16string Hex64 = CountedHex(64);
const std::u16string Base32(CountedBase64Of32);

TEST(PastedHashTest, TheLengthDeterminesTheCandidates) {
  std::vector<PasteCase> cases = {
      BoxOnly(CountedHex(4), Bare(4, Four)), BoxOnly(CountedHex(8), Bare(8, Eight)),
      Both(Hex16, Bare(16, Sixteen)),        Both(CountedHex(20), Bare(20, Twenty)),
      Both(Hex32, Bare(32, ThirtyTwo)),      Both(CountedHex(48), Bare(48, FortyEight)),
      Both(Hex64, Bare(64, SixtyFour)),
  };
  for (const size_t bytes :
       std::initializer_list<size_t>{1, 2, 3, 5, 7, 9, 15, 17, 19, 21, 24, 28, 31, 33, 63, 65}) {
    // Some of these texts are base64 of a known length.
    if (!ParseExpectedHash(CountedHex(bytes))) cases.push_back(Both(CountedHex(bytes), None));
  }
  EXPECT_GT(cases.size(), 15u);
  Check(cases);
}

TEST(PastedHashTest, AcceptsHexadecimalNotations) {
  Check({
      Both(CountedHex(32, {}, true), Bare(32, ThirtyTwo)),
      Both(u"0x" + Hex32, Bare(32, ThirtyTwo)),
      Both(u"0X" + Hex32, Bare(32, ThirtyTwo)),
      Both(CountedHex(32, u":"), Bare(32, ThirtyTwo)),
      Both(CountedHex(32, u" "), Bare(32, ThirtyTwo)),
      Both(CountedHex(32, u"\t"), Bare(32, ThirtyTwo)),
      BoxOnly(CountedHex(32, u"-"), Bare(32, ThirtyTwo)),
      BoxOnly(u"0x" + CountedHex(4), Bare(4, Four)),
      Both(Hex32 + u"\u200B", Bare(32, ThirtyTwo)),
      Both(u"\uFEFF\u00A0 " + Hex32 + u"\r\n", Bare(32, ThirtyTwo)),
  });
}

TEST(PastedHashTest, OnlyTheFirstNonBlankLineIsParsed) {
  Check({
      BoxOnly(u"\n \n\t\r\n" + Hex32 + u"\n" + Hex16, Bare(32, ThirtyTwo)),
      BoxOnly(u"some words\n" + Hex32, None),
      BoxOnly(Hex32 + u"\nsome words", Bare(32, ThirtyTwo)),
      Both(u"", None),
      Both(u" \n\r\n\u200B", None),
  });
}

TEST(PastedHashTest, AcceptsTaggedLines) {
  Check({
      Both(u"SHA256 (setup.exe) = " + Hex32, Named(AlgoId::Sha256, u"setup.exe")),
      Both(u"sha3-256 (a (1).txt) = " + Hex32, Named(AlgoId::Sha3_256, u"a (1).txt")),
      Both(u"BLAKE3 () = " + Hex32, Named(AlgoId::Blake3, u"")),
      Both(u"MD5 (a) = b) = " + Hex16, Named(AlgoId::Md5, u"a) = b")),
      Both(u"\\SHA256 (a\\nb) = " + Hex32, Named(AlgoId::Sha256, u"a\\nb")),
      Both(u"SHA256 (a) =  " + CountedHex(32, {}, true), Named(AlgoId::Sha256, u"a")),
      BoxOnly(u"CRC32 (a) = " + CountedHex(4), Named(AlgoId::Crc32, u"a")),
      BoxOnly(u"XXH3 (a) = " + CountedHex(8), Named(AlgoId::Xxh3_64, u"a")),
      Both(u"MD5 (a) = " + Hex32, None),
      Both(u"WHIRLPOOL (a) = " + Hex64, None),
      Both(u"SHA256 (a) = " + Base32, None),
      Both(u"SHA256(a)= " + Hex32, None),
  });
}

TEST(PastedHashTest, AcceptsIntegrityValues) {
  Check({
      Both(u"sha256-" + Base32, Named(AlgoId::Sha256)),
      Both(u"SHA256-" + Base32, Named(AlgoId::Sha256)),
      Both(u"sha384-" + std::u16string(CountedBase64Of48), Named(AlgoId::Sha384)),
      Both(u"sha512-" + std::u16string(CountedBase64Of64), Named(AlgoId::Sha512)),
      Both(u"sha512-" + Base32, None),
      // Only those three have this form. Otherwise the hyphen is a digit of base64.
      Both(u"md5-" + Base32, None),
      Both(u"sha1-" + Base32, None),
  });
}

TEST(PastedHashTest, AcceptsLabels) {
  std::vector<PasteCase> cases;
  for (const std::u16string_view label :
       {u"SHA256: ", u"SHA256:", u"sha-256=", u"sha-256 = ", u"SHA256 hash ", u"SHA-256 checksum: ",
        u"SHA_256 Sum=", u"sha256\tdigest : ", u"SHA256 value ", u"SHA-256 fingerprint:",
        u"SHA256 "}) {
    cases.push_back(Both(std::u16string(label) + Hex32, Named(AlgoId::Sha256)));
    cases.push_back(Both(std::u16string(label) + Base32, Named(AlgoId::Sha256)));
    cases.push_back(Both(std::u16string(label) + CountedHex(32, u":"), Named(AlgoId::Sha256)));
  }
  Check(cases);
  Check({
      Both(u"SHA3-256: " + Hex32, Named(AlgoId::Sha3_256)),
      BoxOnly(u"SHA256: " + CountedHex(32, u"-"), Named(AlgoId::Sha256)),
      BoxOnly(u"CRC32: " + CountedHex(4), Named(AlgoId::Crc32)),
      // Only one label is removed, and none before a tab,
      Both(u"SHA256 hash sum " + Hex32, None),
      Both(u"SHA256 hash\t" + Hex32, None),
      // nor after a colon.
      Both(u"SHA256:hash:" + Hex32, None),
      // A known length that does not fit the algorithm ends the parse.
      Both(u"SHA-256: " + Hex16, None),
      Both(u"SHA-256: " + CountedHex(5), None),
      // Nothing after the name.
      Both(u"SHA256:", None),
      Both(u"SHA256 hash:", None),
      Both(u"md5sum: " + Hex16, None),
  });
}

TEST(PastedHashTest, AcceptsChecksumLines) {
  Check({
      Both(Hex32 + u"  setup.exe", Bare(32, ThirtyTwo, u"setup.exe")),
      Both(Hex32 + u" *setup.exe", Bare(32, ThirtyTwo, u"setup.exe")),
      Both(Hex32 + u" setup.exe", Bare(32, ThirtyTwo, u"setup.exe")),
      Both(Hex32 + u"    two words.txt", Bare(32, ThirtyTwo, u"two words.txt")),
      Both(u"SHA256 " + Hex32 + u"  a.txt", Named(AlgoId::Sha256, u"a.txt")),
      BoxOnly(u"XXH3_" + CountedHex(8) + u"  a", Named(AlgoId::Xxh3_64, u"a")),
      BoxOnly(u"xxh3_" + CountedHex(8), Named(AlgoId::Xxh3_64)),
      BoxOnly(u"XXH64: XXH3_" + CountedHex(8), Named(AlgoId::Xxh3_64)),
      Both(u"XXH3_" + Hex16, None),
      Both(u"XXH3_", None),
      Both(CountedHex(5) + u"  a", None),
      Both(Base32 + u"  a", None),
      // A hyphen as the name: a separator in the box, a name from the clipboard.
      {Hex16 + u"  -", Bare(16, Sixteen), Bare(16, Sixteen, u"-")},
  });
}

TEST(PastedHashTest, ANameOfHexadecimalDigitsIsReadAsPartOfTheValue) {
  ParsedHash twice = *Bare(16, ThirtyTwo);
  twice.digest.insert(twice.digest.end(), twice.digest.begin(), twice.digest.begin() + 16);
  Check({
      Both(Hex16 + u"  " + Hex16, twice),
      // No algorithm has such a long digest, so this is a name.
      Both(Hex64 + u"  abba", Bare(64, SixtyFour, u"abba")),
  });
}

TEST(PastedHashTest, BareBase64IsAcceptedInTheBoxOnly) {
  Check({
      BoxOnly(Base32, Bare(32, ThirtyTwo)),
      BoxOnly(Base32.substr(0, Base32.size() - 1), Bare(32, ThirtyTwo)),
      BoxOnly(std::u16string(CountedBase64Of48), Bare(48, FortyEight)),
      BoxOnly(std::u16string(CountedBase64Of64), Bare(64, SixtyFour)),
      Both(u"Zm9vYmFy", None),
      Both(u"Hello, world", None),
  });
}

TEST(PastedHashTest, LimitsTheLength) {
  const Result named = Bare(32, ThirtyTwo, u"x");
  const auto ofLength = [](size_t length) {
    return Hex32 + std::u16string(length - Hex32.size() - 1, u' ') + u"x";
  };
  Check({
      Both(ofLength(300), named),
      BoxOnly(ofLength(301), named),
      BoxOnly(ofLength(4096), named),
      Both(ofLength(4097), None),
      // Surrounding blanks don't matter.
      Both(std::u16string(5000, u' ') + Hex32 + std::u16string(5000, u' '), Bare(32, ThirtyTwo)),
  });
}

}  // namespace
}  // namespace swr::testing
