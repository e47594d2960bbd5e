#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/error_codes.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

using swr::AlgoId;

constexpr uint8_t Wanted = 0xAA;
constexpr uint8_t Other = 0xBB;

std::u16string WantedHex(size_t bytes) { return FilledHex(bytes, Wanted); }

const std::vector<FilledDigest>& Other32() {
  static const auto digests = Filled({AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3}, Other);
  return digests;
}

// ---- The sentence about the value in the box.

struct BoxCase {
  const char* description;
  std::vector<RowSetup> rows;
  std::u16string box;
  ResultLine line;
};

class ExpectedHashTest : public ::testing::Test {
 protected:
  static void Check(const std::vector<BoxCase>& cases) {
    for (const BoxCase& test : cases) {
      SCOPED_TRACE(test.description);
      FakeWindow window;
      for (const RowSetup& row : test.rows) AddRow(window, row);
      window.view.SetExpectedText(test.box);
      EXPECT_EQ(window.Result(), test.line);
    }
  }
};

TEST_F(ExpectedHashTest, AnEmptyBox) {
  const ResultLine nothing = {u"", ResultKind::None};
  const std::vector<RowSetup> rows = {{.name = u"a.iso", .digests = Other32()}};
  Check({
      {"no rows", {}, u"", nothing},
      {"a row", rows, u"", nothing},
      {"blanks of every kind", rows, u" \t\r\n\u00A0\uFEFF\u200B", nothing},
  });
}

TEST_F(ExpectedHashTest, TextThatIsNotAHash) {
  const ResultLine hint = {
      u"This doesn't look like a hash. Paste the hex or base64 value from the website.",
      ResultKind::Hint};
  const std::vector<RowSetup> rows = {{.name = u"a.iso", .digests = Other32()}};
  Check({
      {"words", rows, u"the file is fine", hint},
      {"words without rows", {}, u"the file is fine", hint},
      {"ten bytes belong to no algorithm", rows, WantedHex(10), hint},
      {"an odd number of digits", rows, WantedHex(32) + u"a", hint},
      {"a named algorithm of another length", rows, u"SHA256 (a.iso) = " + WantedHex(16), hint},
      {"a blank that is not trimmed", rows, u"\u2003" + WantedHex(32), hint},
  });
}

TEST_F(ExpectedHashTest, WithoutRowsTheLineAsksForAFile) {
  const auto wanted = [](std::u16string text) { return ResultLine{text, ResultKind::Hint}; };
  Check({
      {"one candidate",
       {},
       WantedHex(4),
       wanted(u"Add the file to compare with this hash (CRC32).")},
      {"two",
       {},
       WantedHex(8),
       wanted(u"Add the file to compare with this hash (XXH64 or XXH3-64).")},
      {"four",
       {},
       WantedHex(16),
       wanted(u"Add the file to compare with this hash (MD5, XXH128, MD4 or MD2).")},
      {"SHA-1", {}, WantedHex(20), wanted(u"Add the file to compare with this hash (SHA-1).")},
      {"three",
       {},
       WantedHex(32),
       wanted(u"Add the file to compare with this hash (SHA-256, SHA3-256 or BLAKE3).")},
      {"48 bytes",
       {},
       WantedHex(48),
       wanted(u"Add the file to compare with this hash (SHA-384 or SHA3-384).")},
      {"64 bytes",
       {},
       WantedHex(64),
       wanted(u"Add the file to compare with this hash (SHA-512 or SHA3-512).")},
      {"named by a tagged line",
       {},
       u"SHA256 (a.iso) = " + WantedHex(32),
       wanted(u"Add the file to compare with this SHA-256 hash.")},
      {"named by a label",
       {},
       u"MD5: " + WantedHex(16),
       wanted(u"Add the file to compare with this MD5 hash.")},
      {"a line without a name of the algorithm",
       {},
       WantedHex(20) + u"  a.iso",
       wanted(u"Add the file to compare with this hash (SHA-1).")},
  });
}

TEST_F(ExpectedHashTest, EveryAlgorithmByItsName) {
  for (const swr::AlgoInfo& algo : swr::AllAlgos()) {
    SCOPED_TRACE(swr::WideToUtf8(algo.name));
    const std::u16string name(algo.name);
    const std::u16string box = u"\u00A0" + name + u": " + WantedHex(algo.digestSize) + u"\r\n";
    Check({
        {"no rows",
         {},
         box,
         {u"Add the file to compare with this " + name + u" hash.", ResultKind::Hint}},
        {"a match",
         {{.name = u"a.iso", .digests = {{algo.id, Wanted}}}},
         box,
         {u"Match. The " + name + u" of a.iso is the expected hash.", ResultKind::Good}},
        {"two matches",
         {{.name = u"a.iso", .digests = {{algo.id, Wanted}}},
          {.name = u"b.iso", .digests = {{algo.id, Wanted}}}},
         box,
         {u"Match. 2 files have this " + name + u" hash.", ResultKind::Good}},
        {"no match",
         {{.name = u"a.iso", .digests = {{algo.id, Other}}}},
         box,
         {u"No match. a.iso has a different " + name + u".", ResultKind::Bad}},
        {"not known yet", {{.name = u"a.iso"}}, box, {u"Checking...", ResultKind::Busy}},
    });
  }
}

TEST_F(ExpectedHashTest, Matches) {
  Check({
      {"of the first candidate",
       {{.name = u"a.iso", .digests = {{AlgoId::Sha256, Wanted}}}},
       WantedHex(32),
       {u"Match. The SHA-256 of a.iso is the expected hash.", ResultKind::Good}},
      {"of the second, the third unknown",
       {{.name = u"a.iso", .digests = {{AlgoId::Sha256, Other}, {AlgoId::Sha3_256, Wanted}}}},
       WantedHex(32),
       {u"Match. The SHA3-256 of a.iso is the expected hash.", ResultKind::Good}},
      {"a legacy algorithm that is not shown",
       {{.name = u"a.iso", .digests = {{AlgoId::Md2, Wanted}}}},
       WantedHex(16),
       {u"Match. The MD2 of a.iso is the expected hash.", ResultKind::Good}},
      {"XXH128 comes before MD4",
       {{.name = u"a.iso", .digests = {{AlgoId::Md4, Wanted}, {AlgoId::Xxh128, Wanted}}}},
       WantedHex(16),
       {u"Match. The XXH128 of a.iso is the expected hash.", ResultKind::Good}},
      {"several files, with the algorithm of the first match",
       {{.name = u"a.iso", .digests = {{AlgoId::Sha256, Other}}},
        {.name = u"b.iso", .digests = {{AlgoId::Blake3, Wanted}}},
        {.name = u"c.iso", .digests = {{AlgoId::Sha256, Wanted}}},
        {.name = u"d.iso", .digests = {{AlgoId::Sha256, Wanted}}}},
       WantedHex(32),
       {u"Match. 3 files have this BLAKE3 hash.", ResultKind::Good}},
      {"a match takes precedence over unknown digests",
       {{.name = u"a.iso", .status = RowStatus::Waiting},
        {.name = u"b.iso", .digests = {{AlgoId::Sha256, Wanted}}}},
       WantedHex(32),
       {u"Match. The SHA-256 of b.iso is the expected hash.", ResultKind::Good}},
      {"a row that can't be read does not matter",
       {{.name = u"a.iso", .status = RowStatus::Failed, .error = swr::ErrorAccessDenied},
        {.name = u"b.iso", .digests = {{AlgoId::Sha256, Wanted}}}},
       WantedHex(32),
       {u"Match. The SHA-256 of b.iso is the expected hash.", ResultKind::Good}},
      {"a cancelled row with the digest",
       {{.name = u"a.iso", .digests = {{AlgoId::Sha256, Wanted}}, .status = RowStatus::Cancelled}},
       WantedHex(32),
       {u"Match. The SHA-256 of a.iso is the expected hash.", ResultKind::Good}},
      {"the name in the value does not matter",
       {{.name = u"a.iso", .digests = {{AlgoId::Sha256, Other}}},
        {.name = u"b.iso", .digests = {{AlgoId::Sha256, Wanted}}}},
       u"SHA256 (a.iso) = " + WantedHex(32),
       {u"Match. The SHA-256 of b.iso is the expected hash.", ResultKind::Good}},
      {"a row with another expected digest from a checksum file",
       {{.name = u"a.iso", .digests = {{AlgoId::Sha256, Wanted}}, .expected = Other}},
       WantedHex(32),
       {u"Match. The SHA-256 of a.iso is the expected hash.", ResultKind::Good}},
  });
}

TEST_F(ExpectedHashTest, NoMatchOfASingleFileNamesAllComparedAlgorithms) {
  const auto row = [](std::initializer_list<AlgoId> algos) {
    return std::vector<RowSetup>{{.name = u"a.iso", .digests = Filled(algos, Other)}};
  };
  const auto bad = [](std::u16string text) { return ResultLine{text, ResultKind::Bad}; };
  Check({
      {"one", row({AlgoId::Crc32}), WantedHex(4), bad(u"No match. a.iso has a different CRC32.")},
      {"two", row({AlgoId::Xxh64, AlgoId::Xxh3_64}), WantedHex(8),
       bad(u"No match. a.iso has a different XXH64 and XXH3-64.")},
      {"four", row({AlgoId::Md5, AlgoId::Xxh128, AlgoId::Md4, AlgoId::Md2}), WantedHex(16),
       bad(u"No match. a.iso has a different MD5, XXH128, MD4 and MD2.")},
      {"SHA-1", row({AlgoId::Sha1}), WantedHex(20), bad(u"No match. a.iso has a different SHA-1.")},
      {"three", row({AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3}), WantedHex(32),
       bad(u"No match. a.iso has a different SHA-256, SHA3-256 and BLAKE3.")},
      {"48 bytes", row({AlgoId::Sha384, AlgoId::Sha3_384}), WantedHex(48),
       bad(u"No match. a.iso has a different SHA-384 and SHA3-384.")},
      {"64 bytes", row({AlgoId::Sha512, AlgoId::Sha3_512}), WantedHex(64),
       bad(u"No match. a.iso has a different SHA-512 and SHA3-512.")},
      {"a single file is named even if the value came with another name", row({AlgoId::Sha256}),
       u"SHA256 (b.iso) = " + WantedHex(32), bad(u"No match. a.iso has a different SHA-256.")},
  });
}

TEST_F(ExpectedHashTest, NoMatchAmongSeveral) {
  const RowSetup a = {.name = u"a.iso", .digests = Other32()};
  const RowSetup b = {.name = u"b.iso", .digests = Other32()};
  const RowSetup missing = {
      .name = u"gone.iso", .status = RowStatus::Failed, .error = swr::ErrorFileNotFound};
  const RowSetup unreadable = {
      .name = u"shut.iso", .status = RowStatus::Failed, .error = swr::ErrorAccessDenied};
  const auto bad = [](std::u16string text) { return ResultLine{text, ResultKind::Bad}; };
  Check({
      {"two", {a, b}, WantedHex(32), bad(u"No match. None of the 2 files has this hash.")},
      {"failed rows are counted",
       {a, missing, unreadable},
       WantedHex(32),
       bad(u"No match. None of the 3 files has this hash.")},
      {"no row could be read",
       {missing, unreadable},
       WantedHex(32),
       bad(u"No match. None of the 2 files has this hash.")},
      {"named by the pasted line",
       {a, b},
       WantedHex(32) + u"  a.iso",
       bad(u"No match. a.iso has a different SHA-256, SHA3-256 and BLAKE3.")},
      {"named by a tagged line in another case",
       {a, b},
       u"BLAKE3 (B.ISO) = " + WantedHex(32),
       bad(u"No match. b.iso has a different BLAKE3.")},
      {"two rows with that name: the later one",
       {{.name = u"a.iso", .digests = Other32()}, b, {.name = u"A.iso", .digests = Other32()}},
       WantedHex(32) + u" *a.iso",
       bad(u"No match. A.iso has a different SHA-256, SHA3-256 and BLAKE3.")},
      {"a name that no row has",
       {a, b},
       WantedHex(32) + u"  c.iso",
       bad(u"No match. None of the 2 files has this hash.")},
      {"the named row is missing",
       {a, missing},
       WantedHex(32) + u"  gone.iso",
       bad(u"gone.iso can't be read, so it can't be compared.")},
      {"the named row can't be read",
       {unreadable, a},
       WantedHex(32) + u"  shut.iso",
       bad(u"shut.iso can't be read, so it can't be compared.")},
      {"the named row was read, another was not",
       {unreadable, a},
       WantedHex(32) + u"  a.iso",
       bad(u"No match. a.iso has a different SHA-256, SHA3-256 and BLAKE3.")},
      {"a single missing file",
       {missing},
       WantedHex(32),
       bad(u"gone.iso can't be read, so it can't be compared.")},
      {"a single unreadable file",
       {unreadable},
       WantedHex(32),
       bad(u"shut.iso can't be read, so it can't be compared.")},
  });
}

TEST_F(ExpectedHashTest, NoVerdictWhileADigestIsUnknown) {
  const ResultLine checking = {u"Checking...", ResultKind::Busy};
  Check({
      {"a waiting row", {{.name = u"a", .status = RowStatus::Waiting}}, WantedHex(20), checking},
      {"a row that is being hashed",
       {{.name = u"a", .status = RowStatus::Hashing}},
       WantedHex(20),
       checking},
      {"one candidate of three is known",
       {{.name = u"a", .digests = {{AlgoId::Sha256, Other}}}},
       WantedHex(32),
       checking},
      {"one of two rows is known",
       {{.name = u"a", .digests = Other32()}, {.name = u"b"}},
       WantedHex(32),
       checking},
      {"the named row is known",
       {{.name = u"a", .digests = Other32()}, {.name = u"b"}},
       WantedHex(32) + u"  a",
       checking},
  });
}

// The forms of hashes on web pages and in files.
TEST_F(ExpectedHashTest, Spellings) {
  const std::vector<RowSetup> rows = {{.name = u"a.iso", .digests = {{AlgoId::Sha256, Wanted}}}};
  const ResultLine match = {u"Match. The SHA-256 of a.iso is the expected hash.", ResultKind::Good};
  // 32 bytes of 0xAA.
  const std::u16string base64 = std::u16string(42, u'q') + u"o=";
  std::u16string colons;
  std::u16string hyphens;
  for (int i = 0; i < 32; ++i) {
    colons += i == 0 ? u"AA" : u":AA";
    hyphens += i == 0 ? u"aa" : u"-aa";
  }
  Check({
      {"a zero-width space after it", rows, WantedHex(32) + u"\u200B", match},
      {"upper case and a zero-width space", rows, std::u16string(64, u'A') + u"\u200B", match},
      {"base64", rows, base64, match},
      {"an integrity value", rows, u"sha256-" + base64, match},
      {"0x", rows, u"0x" + WantedHex(32), match},
      {"colons", rows, colons, match},
      {"hyphens", rows, hyphens, match},
      {"a label", rows, u"SHA-256 checksum: " + WantedHex(32), match},
      {"a line of a list", rows, WantedHex(32) + u" *other.iso", match},
      {"a tagged line", rows, u"SHA256 (other.iso) = " + WantedHex(32), match},
      {"the second of two lines is ignored", rows,
       u"\n\n" + WantedHex(32) + u"\n" + FilledHex(32, Other), match},
  });
}

// ---- Paste.

struct PasteCase {
  const char* description;
  uint32_t command;
  bool editHasFocus;
  std::optional<std::u16string> clipboard;
  std::u16string box;  // initially "before"
  int pastesIntoEdit;
};

TEST(PasteExpectedTest, Table) {
  const PasteCase cases[] = {
      {"the button", IDC_PASTE, false, u"\u00A0 ab cd\r\n\u200B", u"ab cd", 0},
      {"the button, whatever has the focus", IDC_PASTE, true, u"abcd", u"abcd", 0},
      {"the button without a text", IDC_PASTE, false, std::nullopt, u"before", 0},
      {"an empty text", IDC_PASTE, false, u"", u"", 0},
      {"inner line ends are kept", IDC_PASTE, false, u"\nab\ncd\n", u"ab\ncd", 0},
      {"the menu", ID_PASTE_EXPECTED, false, u" abcd ", u"abcd", 0},
      {"the menu without a text", ID_PASTE_EXPECTED, false, std::nullopt, u"before", 0},
      {"the menu command pastes into the focused edit box", ID_PASTE_EXPECTED, true, u"abcd",
       u"before", 1},
  };
  for (const PasteCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    window.view.expectedText = u"before";
    window.view.editHasFocus = test.editHasFocus;
    window.desktop.Copy(test.clipboard);
    EXPECT_TRUE(window.commands.Run(test.command));
    EXPECT_EQ(window.view.expectedText, test.box);
    EXPECT_EQ(window.view.pastesIntoEdit, test.pastesIntoEdit);
  }
}

TEST(PasteExpectedTest, IsComparedAtOnce) {
  FakeWindow window;
  AddRow(window, {.name = u"a.iso", .digests = {{AlgoId::Sha1, Wanted}}});
  window.desktop.Copy(u"\t" + WantedHex(20) + u"\r\n");
  window.commands.Run(IDC_PASTE);
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Match. The SHA-1 of a.iso is the expected hash.", ResultKind::Good}));
}

}  // namespace
}  // namespace app::testing
