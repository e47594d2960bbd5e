// The exact text that each Copy command puts on the clipboard.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/text/decimal_text.h"
#include "swr/text/display_escape.h"
#include "tests/support/fake_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;

const std::u16string Crc = u"a0a1a2a3";
const std::u16string Md5 = u"a0a1a2a3a4a5a6a7a8a9aaabacadaeaf";
const std::u16string Sha1 = u"a0a1a2a3a4a5a6a7a8a9aaabacadaeafb0b1b2b3";

void Give(Row& row, const std::vector<AlgoId>& algos) {
  for (const AlgoId algo : algos) {
    swr::DigestSlot slot;
    slot.present = true;
    slot.length = static_cast<uint8_t>(swr::GetAlgo(algo).digestSize);
    for (uint8_t i = 0; i < slot.length; ++i) slot.bytes[i] = static_cast<uint8_t>(0xA0 + i);
    row.digests.Set(swr::IndexOf(algo), slot);
  }
}

struct CopyCase {
  const char* description;
  uint32_t command;
  std::vector<std::vector<AlgoId>> rows;  // the digests of each; all rows are selected
  std::optional<std::u16string> copied;   // nothing when the clipboard is not changed
  bool uppercase = false;
};

// MD5 and SHA-1 are selected; the files are named 0, 1...
const std::vector<CopyCase>& CopyCases() {
  static const std::vector<CopyCase> cases = {
      // Copy Hashes.
      {"no row", ID_COPY_HASHES, {}, std::nullopt},
      {"one row, one digest", ID_COPY_HASHES, {{AlgoId::Md5}}, Md5},
      {"one row, one selected digest", ID_COPY_HASHES, {{AlgoId::Crc32, AlgoId::Sha1}}, Sha1},
      {"one row, two digests",
       ID_COPY_HASHES,
       {{AlgoId::Sha1, AlgoId::Md5}},
       u"MD5: " + Md5 + u"\r\nSHA-1: " + Sha1 + u"\r\n"},
      {"one row without a digest", ID_COPY_HASHES, {{}}, u""},
      {"one row without a selected digest", ID_COPY_HASHES, {{AlgoId::Crc32}}, u""},
      {"two rows",
       ID_COPY_HASHES,
       {{AlgoId::Md5, AlgoId::Sha1}, {AlgoId::Sha1, AlgoId::Crc32}},
       u"MD5 (0) = " + Md5 + u"\r\nSHA1 (0) = " + Sha1 + u"\r\nSHA1 (1) = " + Sha1 + u"\r\n"},
      {"two rows without digests", ID_COPY_HASHES, {{}, {}}, u""},
      {"in upper case", ID_COPY_HASHES, {{AlgoId::Md5}}, u"A0A1A2A3A4A5A6A7A8A9AAABACADAEAF", true},
      {"the button does the same", IDC_COPY, {{AlgoId::Md5}}, Md5},
      // Copy Line.
      {"a line", ID_CTX_COPY_LINE, {{AlgoId::Sha1}}, Sha1 + u"  0\r\n"},
      {"the first algorithm that all rows have",
       ID_CTX_COPY_LINE,
       {{AlgoId::Md5, AlgoId::Sha1}, {AlgoId::Sha1}},
       Sha1 + u"  0\r\n" + Sha1 + u"  1\r\n"},
      {"no algorithm that all rows have",
       ID_CTX_COPY_LINE,
       {{AlgoId::Md5}, {AlgoId::Sha1}},
       std::nullopt},
      {"only a digest that is not selected", ID_CTX_COPY_LINE, {{AlgoId::Crc32}}, std::nullopt},
      {"no digest", ID_CTX_COPY_LINE, {{}}, std::nullopt},
      // Copy All Hashes.
      {"all digests, whatever is selected",
       ID_CTX_COPY_ALL,
       {{AlgoId::Crc32, AlgoId::Md5}, {}},
       u"CRC32 (0) = " + Crc + u"\r\nMD5 (0) = " + Md5 + u"\r\n"},
      {"all digests of a row without any", ID_CTX_COPY_ALL, {{}}, u""},
      // Copy Path.
      {"a path", ID_CTX_COPY_PATH, {{}}, u"C:\\d\\0"},
      {"paths", ID_CTX_COPY_PATH, {{}, {}}, u"C:\\d\\0\r\nC:\\d\\1\r\n"},
  };
  return cases;
}

TEST(CopyingTest, EachCommandCopiesItsText) {
  for (const CopyCase& test : CopyCases()) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    window.algorithms.Select(swr::MaskOf(AlgoId::Md5) | swr::MaskOf(AlgoId::Sha1));
    window.options.uppercase = test.uppercase;
    for (size_t i = 0; i < test.rows.size(); ++i) {
      Row& row = window.AddRow(u"C:\\d\\" + std::u16string(1, static_cast<char16_t>(u'0' + i)));
      Give(row, test.rows[i]);
      window.view.selected.push_back(i);
    }
    EXPECT_TRUE(window.commands.Run(test.command));
    EXPECT_EQ(window.desktop.clipboard, test.copied);
  }
}

// The text is made in parts of 1,000 rows; the last part has a single row, the last row long lines.
TEST(CopyingTest, CopiesTheLinesOfManyRows) {
  constexpr size_t count = 2001;
  FakeWindow window;
  window.algorithms.Select(swr::MaskOf(AlgoId::Md5));
  std::u16string lines;
  std::u16string tagged;
  std::u16string paths;
  for (size_t i = 0; i < count; ++i) {
    const std::u16string name =
        i + 1 < count ? swr::DecimalText(i) : std::u16string(100'000, u'x') + u"\n";
    Give(window.AddRow(u"C:\\d\\" + name), {AlgoId::Md5});
    window.view.selected.push_back(i);
    const bool isLast = i + 1 == count;
    const std::u16string escaped = isLast ? std::u16string(100'000, u'x') + u"\\n" : name;
    lines += (isLast ? u"\\" : u"") + Md5 + u"  " + escaped + u"\r\n";
    tagged += (isLast ? u"\\" : u"") + (u"MD5 (" + escaped) + u") = " + Md5 + u"\r\n";
    paths += u"C:\\d\\" + (isLast ? swr::EscapeForDisplay(name) : name) + u"\r\n";
  }
  window.commands.Run(ID_CTX_COPY_LINE);
  EXPECT_TRUE(window.desktop.clipboard == lines);
  window.commands.Run(ID_COPY_HASHES);
  EXPECT_TRUE(window.desktop.clipboard == tagged);
  window.commands.Run(ID_CTX_COPY_ALL);
  EXPECT_TRUE(window.desktop.clipboard == tagged);
  window.commands.Run(ID_CTX_COPY_PATH);
  EXPECT_TRUE(window.desktop.clipboard == paths);
}

TEST(CopyingTest, CopyHashesCopiesTextWhileAnEditBoxHasTheFocus) {
  FakeWindow window;
  Give(window.AddRow(u"a"), {AlgoId::Md5});
  window.view.selected = {0};
  window.view.editHasFocus = true;
  window.commands.Run(ID_COPY_HASHES);
  EXPECT_EQ(window.view.copiesFromEdit, 1);
  EXPECT_EQ(window.desktop.clipboard, std::nullopt);
  window.commands.Run(IDC_COPY);
  EXPECT_EQ(window.desktop.clipboard, Md5) << "the button always copies hashes";
}

}  // namespace
}  // namespace app::testing
