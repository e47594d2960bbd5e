#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "swr/system/error_codes.h"
#include "swr/text/display_text.h"
#include "swr/text/encoding.h"
#include "tests/support/abc_lists.h"
#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

// The contents of checksum files, and the rows that they produce.
class ListedFilesTest : public VerificationTest {};

TEST_F(ListedFilesTest, FilesOfUpTo64MebibytesAreRead) {
  constexpr uint64_t largest = 67108864;
  const std::u16string path = tree.AddFile(u"big.sha256", Line(AbcSha256, "a.bin"));
  swr::testing::ResizeFile(path, largest + 1);
  window.verification.VerifyFile(path);
  EXPECT_EQ(window.desktop.messages,
            (std::vector<TaskDialogSpec>{MessageDialog(
                TaskDialogIcon::Error, u"The checksum file can't be read.",
                path + u"\n\n" + swr::FormatErrorText(swr::ErrorFileTooLarge) + u".")}));
  EXPECT_TRUE(window.rows.IsEmpty());

  window.desktop.messages.clear();
  swr::testing::ResizeFile(path, largest);
  window.verification.VerifyFile(path);
  EXPECT_TRUE(window.desktop.messages.empty());
  EXPECT_EQ(Names(), TextList{u"a.bin"});
  EXPECT_EQ(window.view.banner,
            u"1 line of the checksum file aren't checksums and were skipped (first: line 2).    "
            u"<a id=\"x\">Dismiss</a>");
}

// ---- Lines that were skipped.

TEST_F(ListedFilesTest, TheBannerCountsSkippedLinesAndGivesTheFirst) {
  struct Case {
    const char* description;
    std::string text;
    size_t rows;
    std::optional<std::u16string> banner;
  };
  const std::string good = Line(AbcSha256, "a.bin");
  const Case cases[] = {
      {"none", good + "\n# comment\n; comment\n", 1, std::nullopt},
      {"one", good + "rubbish\n", 1,
       u"1 line of the checksum file aren't checksums and were skipped (first: line 2).    "
       u"<a id=\"x\">Dismiss</a>"},
      {"two among three good ones", good + "\n" + good + "rubbish\n" + good + "more rubbish", 3,
       u"2 lines of the checksum file aren't checksums and were skipped (first: line 4).    "
       u"<a id=\"x\">Dismiss</a>"},
      {"the first line", "rubbish\n" + good, 1,
       u"1 line of the checksum file aren't checksums and were skipped (first: line 1).    "
       u"<a id=\"x\">Dismiss</a>"},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow other;
    other.verification.VerifyFile(tree.AddFile(u"list.txt", test.text));
    EXPECT_EQ(other.rows.Size(), test.rows);
    EXPECT_EQ(other.view.banner, test.banner);
    EXPECT_EQ(other.banners.Kind(), test.banner ? BannerKind::SkippedLines : BannerKind::None);
    EXPECT_EQ(other.banners.Payload(), u"");
    EXPECT_TRUE(other.desktop.messages.empty());
  }
}

// ---- Unusual lists, and the verdict on each of their lines.

struct ListCase {
  const char* description;
  std::string text;
  TextList cells;  // of the Status column, row by row
  ResultLine line;
  std::optional<std::u16string> banner;
};

TEST_F(ListedFilesTest, EveryChecksumLineGetsAVerdict) {
  const std::string hashName = Zeros;  // the file holds "abc"
  tree.AddFile(swr::Utf8ToWide(hashName), "abc");
  tree.AddFile(u"empty", "");
  const std::string altered32 = "aa" + AbcMd5.substr(2);
  const std::string altered40 = "bb" + AbcSha1.substr(2);
  const std::string altered64 = "cc" + AbcSha256.substr(2);
  const auto skipped = [](std::u16string_view words, std::u16string_view first) {
    return std::u16string(words) +
           u" of the checksum file aren't checksums and were skipped (first: line " +
           std::u16string(first) + u").    <a id=\"x\">Dismiss</a>";
  };
  const ListCase cases[] = {
      {"one good line among rubbish",
       "rubbish\n<html>\n" + Line(AbcSha256, "a.bin") + "more rubbish\n",
       {u"OK (SHA-256)"},
       {u"The file is OK.", ResultKind::Good},
       skipped(u"3 lines", u"1")},
      {"one wrong line among rubbish",
       "rubbish\n" + Line(altered64, "a.bin"),
       {u"FAILED"},
       {u"Not all files match: 0 OK, 1 FAILED.", ResultKind::Bad},
       skipped(u"1 line", u"1")},
      {"the same name right and wrong",
       Line(AbcSha256, "a.bin") + Line(altered64, "a.bin"),
       {u"OK (SHA-256)", u"FAILED"},
       {u"Not all files match: 1 OK, 1 FAILED.", ResultKind::Bad}},
      {"the same name wrong and right",
       Line(altered64, "a.bin") + Line(AbcSha256, "a.bin"),
       {u"FAILED", u"OK (SHA-256)"},
       {u"Not all files match: 1 OK, 1 FAILED.", ResultKind::Bad}},
      {"four digests of one file, three of them altered",
       "MD5 (a.bin) = " + altered32 + "\nSHA1 (a.bin) = " + altered40 +
           "\nSHA256 (a.bin) = " + AbcSha256 + "\nSHA3-256 (a.bin) = " + altered64 + "\n",
       {u"FAILED", u"FAILED", u"OK (SHA-256)", u"FAILED"},
       {u"Not all files match: 1 OK, 3 FAILED.", ResultKind::Bad}},
      {"a name that looks like a hash",
       Line(AbcSha256, hashName),
       {u"OK (SHA-256)"},
       {u"The file is OK.", ResultKind::Good}},
      {"a name that looks like a hash, and the hash is wrong",
       Line(altered64, hashName),
       {u"FAILED"},
       {u"Not all files match: 0 OK, 1 FAILED.", ResultKind::Bad}},
      {"a name that looks like the hash of another file",
       Line(AbcSha256, AbcSha256),
       {u"Missing"},
       {u"Not all files match: 0 OK, 1 missing.", ResultKind::Bad}},
      {"a hash of zeros",
       Line(Zeros, "a.bin"),
       {u"FAILED"},
       {u"Not all files match: 0 OK, 1 FAILED.", ResultKind::Bad}},
      {"a hash of zeros for an empty file",
       Line(Zeros, "empty") + "CRC32 (empty) = 00000000\n",
       {u"FAILED", u"OK (CRC32)"},
       {u"Not all files match: 1 OK, 1 FAILED.", ResultKind::Bad}},
      {"hashes of zeros of every length",
       "empty2 00000000\n" + Line(Zeros.substr(0, 32), "a.bin") +
           Line(Zeros.substr(0, 40), "a.bin") + Line(Zeros + Zeros, "a.bin"),
       {u"Missing", u"FAILED", u"FAILED", u"FAILED"},
       {u"Not all files match: 0 OK, 3 FAILED, 1 missing.", ResultKind::Bad}},
      {"a shortened hash with the name of its algorithm",
       "XXH3_" + AbcSha256.substr(0, 4) + "  a.bin\n",
       {u"FAILED"},
       {u"Not all files match: 0 OK, 1 FAILED.", ResultKind::Bad}},
      {"only missing files",
       Line(AbcSha256, "x") + Line(AbcMd5, "y"),
       {u"Missing", u"Missing"},
       {u"Not all files match: 0 OK, 2 missing.", ResultKind::Bad}},
      {"the hash of another algorithm of that length",
       "SHA256 (a.bin) = " + AbcSha3 + "\n",
       {u"FAILED"},
       {u"Not all files match: 0 OK, 1 FAILED.", ResultKind::Bad}},
  };
  for (const ListCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow other;
    other.verification.VerifyFile(tree.AddFile(u"list", test.text));
    other.HashQueuedFiles();
    TextList cells;
    for (size_t i = 0; i < other.rows.Size(); ++i) {
      cells.push_back(other.StatusCell(i));
      const bool isGood = cells.back().starts_with(u"OK");
      EXPECT_EQ(other.cells.TintOf(i), isGood ? RowTint::Good : RowTint::Bad) << i;
    }
    EXPECT_EQ(cells, test.cells);
    EXPECT_EQ(other.Result(), test.line);
    EXPECT_EQ(other.view.banner, test.banner);
  }
}

// ---- Encodings and line ends.

std::string Utf16(std::u16string_view text, bool bigEndian) {
  std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : text) {
    const auto high = static_cast<char>(unit >> 8);
    const auto low = static_cast<char>(unit & 0xFF);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

TEST_F(ListedFilesTest, Encodings) {
  tree.AddFile(u"caf\u00E9.bin", "abc");
  const std::u16string hash = swr::Utf8ToWide(AbcSha256);
  const std::u16string text = hash + u"  a.bin\n" + hash + u"  caf\u00E9.bin\n";
  std::string ansi = Line(AbcSha256, "a.bin") + Line(AbcSha256, "caf\xE9.bin");
  struct Case {
    const char* description;
    std::string bytes;
  };
  const Case cases[] = {
      {"UTF-8", swr::WideToUtf8(text)},
      {"UTF-8 with a byte-order mark", "\xEF\xBB\xBF" + swr::WideToUtf8(text)},
      {"UTF-16, little-endian", Utf16(text, false)},
      {"UTF-16, big-endian", Utf16(text, true)},
      {"the ANSI code page", ansi},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow other;
    other.verification.VerifyFile(tree.AddFile(u"list.sha256", test.bytes));
    ASSERT_EQ(other.rows.Size(), 2u);
    EXPECT_EQ(other.rows[1].Path(), tree.Path(u"caf\u00E9.bin"));
    other.HashQueuedFiles();
    EXPECT_EQ(other.Result(), (ResultLine{u"All 2 files are OK.", ResultKind::Good}));
    EXPECT_FALSE(other.view.banner);
  }
}

TEST_F(ListedFilesTest, LineEnds) {
  const std::string plain = AbcSha256 + "  ";
  const std::string tagged = "SHA256 (b.bin) = " + AbcSha256;
  struct Case {
    const char* description;
    std::string text;
    TextList names;
    ResultLine line;
  };
  const ResultLine good = {u"All 2 files are OK.", ResultKind::Good};
  const Case cases[] = {
      {"LF", plain + "a.bin\n" + tagged + "\n", {u"a.bin", u"b.bin"}, good},
      {"CR LF", plain + "a.bin\r\n" + tagged + "\r\n", {u"a.bin", u"b.bin"}, good},
      {"no line end at the end", plain + "a.bin\n" + plain + "b.bin", {u"a.bin", u"b.bin"}, good},
      {"no line end at the end, after a tagged line",
       plain + "a.bin\r\n" + tagged,
       {u"a.bin", u"b.bin"},
       good},
      {"CR LF and LF mixed", tagged + "\r\n" + plain + "a.bin\n", {u"b.bin", u"a.bin"}, good},
      {"CR CR LF after tagged lines",
       tagged + "\r\r\n" + "SHA256 (a.bin) = " + AbcSha256 + "\r\r\n",
       {u"b.bin", u"a.bin"},
       good},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow other;
    other.verification.VerifyFile(tree.AddFile(u"list.sha256", test.text));
    TextList names;
    for (const Row& row : other.rows) names.push_back(row.Name());
    EXPECT_EQ(names, test.names);
    other.HashQueuedFiles();
    EXPECT_EQ(other.Result(), test.line);
    EXPECT_FALSE(other.view.banner);
  }
}

// A doubled carriage return becomes part of the name; there is no such file, so nothing is OK.
TEST_F(ListedFilesTest, ADoubledCarriageReturnIsPartOfAPlainName) {
  Load(u"list.sha256", AbcSha256 + "  a.bin\r\r\n");
  ASSERT_EQ(Names(), TextList{u"a.bin\r"});
  window.HashQueuedFiles();
  EXPECT_EQ(window.rows[0].status, RowStatus::Failed);
  EXPECT_EQ(window.cells.TintOf(0), RowTint::Bad);
  EXPECT_EQ(window.Result().kind, ResultKind::Bad);
}

}  // namespace
}  // namespace app::testing
