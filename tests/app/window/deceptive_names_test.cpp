// Deceptive names: line ends, control characters and characters that reverse text, in every place
// where the window shows a name, and in what it copies and saves.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/desktop/addresses.h"
#include "resources/resource_ids.h"
#include "swr/system/error_codes.h"
#include "swr/text/display_escape.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::EscapeForDisplay;
using swr::testing::TempTree;

constexpr std::u16string_view Plain = u"(plain)";

const std::vector<std::u16string>& DeceptiveNames() {
  static const std::vector<std::u16string> names = {
      u"photo\u202Egpj.exe",
      u"\u2067a\u2069",
      u"a\r\nSignature:\tSigned by Nobody, valid",
      u"a\nb",
      u"a\rb",
      u"a\u0085b\u2028c\u2029d",
      u"a\tb\x1B[31m\x7F",
      u"\u200Bsetup.exe\uFEFF",
      u"a\u00A0\u2003\u3000b",
  };
  return names;
}

std::u16string Replaced(std::u16string text, std::u16string_view by) {
  for (size_t at = 0; (at = text.find(Plain, at)) != text.npos; at += by.size()) {
    text.replace(at, Plain.size(), by);
  }
  return text;
}

// All texts that a window shows for its first row, in each state of the row.
std::vector<std::u16string> Shown(const std::u16string& name, RowStatus status, uint32_t error) {
  FakeWindow window;
  Row& row = window.AddRow(u"C:\\d" + name + u"\\" + name);
  row.extras.Make().checksumFile = std::make_shared<const std::u16string>(u"C:\\" + name);
  row.extras.Make().signature =
      swr::SignatureResult{.state = swr::SignatureState::Valid, .signer = name};
  row.extras.Make().zone =
      swr::ZoneRecord{.found = true, .zoneId = 3, .hostUrl = name, .referrerUrl = name};
  row.status = status;
  row.error = error;
  Expect(row, FilledBytes(32, 1), {AlgoId::Sha256});
  PutDigest(row, {AlgoId::Sha256, 1});
  window.view.selected = {0};
  window.details.Refresh();
  window.expected.Compare();
  std::vector<std::u16string> texts = {window.cells.TextOf(0, 0), window.cells.TextOf(0, 1),
                                       window.StatusCell(0), window.view.details,
                                       window.view.resultLine};
  for (const uint8_t fill : {uint8_t{1}, uint8_t{2}}) {
    window.view.SetExpectedText(u"SHA-256: " + FilledHex(32, fill));
    texts.push_back(window.view.resultLine);
  }
  window.queue.snapshot = {.active = true, .currentPath = row.Path(), .currentSize = 10};
  window.progress.Update();
  texts.push_back(window.view.statusText);

  Row& other = window.AddRow(u"other");
  other.status = RowStatus::Done;
  for (const uint64_t size : {100u, 101u}) {
    other.size = size;
    PutDigest(other, {AlgoId::Sha256, 1});
    window.view.selected = {0, 1};
    window.commands.Run(ID_CTX_COMPARE);
    window.view.selected = {1, 0};
  }
  for (const TaskDialogSpec& dialog : window.desktop.messages) texts.push_back(dialog.content);
  return texts;
}

TEST(DeceptiveNamesTest, AreEscapedWhereverTheyAreShown) {
  const std::pair<RowStatus, uint32_t> outcomes[] = {{RowStatus::Done, 0},
                                                     {RowStatus::Failed, swr::ErrorFileNotFound},
                                                     {RowStatus::Failed, swr::ErrorAccessDenied}};
  for (const auto& [status, error] : outcomes) {
    const std::vector<std::u16string> plain = Shown(std::u16string(Plain), status, error);
    for (const std::u16string& name : DeceptiveNames()) {
      const std::vector<std::u16string> shown = Shown(name, status, error);
      ASSERT_EQ(shown.size(), plain.size());
      for (size_t i = 0; i < shown.size(); ++i) {
        EXPECT_EQ(swr::WideToUtf8(shown[i]),
                  swr::WideToUtf8(Replaced(plain[i], EscapeForDisplay(name))))
            << "text " << i;
      }
    }
  }
}

TEST(DeceptiveNamesTest, MessagesAboutAFileKeepTheirLines) {
  for (const std::u16string& name : DeceptiveNames()) {
    FakeWindow window;
    const std::u16string path = u"/there is no folder of this name/" + name;
    window.verification.VerifyFile(path);
    Row& row = window.AddRow(u"a");
    row.status = RowStatus::Done;
    for (const AlgoId id : swr::IdsFromMask(window.options.algorithms)) PutDigest(row, {id, 1});
    window.desktop.saveTarget = SaveTarget{.path = path, .filter = 0};
    window.commands.Run(ID_SAVE_CHECKSUMS);
    ASSERT_EQ(window.desktop.messages.size(), 2u);
    for (const TaskDialogSpec& message : window.desktop.messages) {
      EXPECT_TRUE(message.content.starts_with(EscapeForDisplay(path) + u"\n\n"));
    }
  }
}

// A line of a checksum file may contain an escaped line end; the row of such a name stays readable.
TEST(DeceptiveNamesTest, AListedNameCannotForgeALineOfTheDetails) {
  TempTree tree;
  const std::u16string list =
      tree.AddFile(u"SHA256SUMS",
                   "\\" + std::string(64, 'a') + "  a\\nSignature:\tSigned by Nobody, valid\\n\n");
  FakeWindow window;
  window.verification.VerifyFile(list);
  ASSERT_EQ(window.rows.Size(), 1u);
  EXPECT_NE(window.rows[0].Name().find(u'\n'), std::u16string::npos);
  window.view.selected = {0};
  window.details.Refresh();
  EXPECT_TRUE(window.view.details.starts_with(
      u"a[U+000A]Signature:[U+0009]Signed by Nobody, valid[U+000A]\r\nFolder:\t"))
      << swr::WideToUtf8(window.view.details);
}

TEST(DeceptiveNamesTest, CannotForgeALineOfCopiedText) {
  FakeWindow window;
  window.algorithms.Select(swr::MaskOf(AlgoId::Crc32));
  for (const char16_t* name : {u"a\r\n00000000  b", u"c\u202Ed", u"e"}) {
    Row& row = window.AddRow(name);
    row.path = u"C:\\" + row.Name();
    PutDigest(row, {AlgoId::Crc32, 1});
  }
  window.view.selected = {0, 1, 2};
  const auto copied = [&](uint32_t command) {
    window.commands.Run(command);
    return window.desktop.clipboard.value_or(u"");
  };
  EXPECT_EQ(copied(ID_CTX_COPY_LINE),
            u"\\01010101  a\\r\\n00000000  b\r\n"
            u"01010101  c\u202Ed\r\n"
            u"01010101  e\r\n");
  const std::u16string tagged =
      u"\\CRC32 (a\\r\\n00000000  b) = 01010101\r\n"
      u"CRC32 (c\u202Ed) = 01010101\r\n"
      u"CRC32 (e) = 01010101\r\n";
  EXPECT_EQ(copied(ID_CTX_COPY_ALL), tagged);
  EXPECT_EQ(copied(ID_COPY_HASHES), tagged);
  EXPECT_EQ(copied(ID_CTX_COPY_PATH),
            u"C:\\a[U+000D][U+000A]00000000  b\r\n"
            u"C:\\c\u202Ed\r\n"
            u"C:\\e\r\n");
  // A single path is copied unchanged: it can't be mistaken for two.
  window.view.selected = {0};
  EXPECT_EQ(copied(ID_CTX_COPY_PATH), u"C:\\a\r\n00000000  b");
}

// In a message, text that looks like a link to a program has no effect.
TEST(DeceptiveNamesTest, MessagesLinkToTheProgramsOwnAddressesOnly) {
  EXPECT_TRUE(MayLinkTo(ProductPage));
  EXPECT_TRUE(MayLinkTo(u"mailto:support@sumwright.example"));
  for (const std::u16string_view address :
       {u"", u"calc.exe", u"C:\\Windows\\System32\\calc.exe", u"file:///C:/x.exe", u"mailto:",
        u"mailto:support@sumwright.example?attach=C:\\x", u"support@sumwright.example",
        u"https://sumwright.example", u"https://sumwright.example/x",
        u"https://sumwright.example.other/"}) {
    EXPECT_FALSE(MayLinkTo(address)) << swr::WideToUtf8(address);
  }
}

}  // namespace
}  // namespace app::testing
