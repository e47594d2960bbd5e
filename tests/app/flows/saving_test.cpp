#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/checksums/checksum_writer.h"
#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/text/display_text.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/fault_plan.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::AlgoMask;
using swr::MaskOf;
using swr::SystemCall;
using swr::testing::InstalledFaults;
using swr::testing::TempTree;

constexpr AlgoMask Md5 = MaskOf(AlgoId::Md5);
constexpr AlgoMask Sha256 = MaskOf(AlgoId::Sha256);
constexpr AlgoMask Crc32 = MaskOf(AlgoId::Crc32);

const FileFilter Tagged = {u"All algorithms, BSD tagged format (*.digests)", u"*.digests"};
const FileFilter Sfv = {u"SFV (*.sfv)", u"*.sfv"};
const FileFilter Csv = {u"CSV spreadsheet (*.csv)", u"*.csv"};
const FileFilter Json = {u"JSON (*.json)", u"*.json"};
const FileFilter OfMd5 = {u"MD5 checksums, sha256sum format (*.md5)", u"*.md5"};
const FileFilter OfSha256 = {u"SHA-256 checksums, sha256sum format (*.sha256)", u"*.sha256"};
const FileFilter OfCrc32 = {u"CRC32 checksums, sha256sum format (*.crc32)", u"*.crc32"};

const TaskDialogSpec NothingToSave =
    MessageDialog(TaskDialogIcon::Information, u"There's nothing to save yet.",
                  u"Add files and wait until their checksums are calculated.");

std::string ReadBytes(const std::u16string& path) {
  swr::File file;
  if (swr::File::Open(swr::ToLongPath(path), swr::FileSharing::Everything, file) != 0) {
    return "(no such file)";
  }
  std::string bytes(1 << 16, '\0');
  const swr::ReadResult read = file.Read(bytes.data(), static_cast<uint32_t>(bytes.size()));
  bytes.resize(read.bytes);
  return bytes;
}

void Save(FakeWindow& window) { window.commands.Run(ID_SAVE_CHECKSUMS); }

// ---- What is offered.

struct OfferCase {
  const char* description;
  AlgoMask selected;
  std::vector<RowSetup> rows;
  std::vector<size_t> selection;
  std::vector<FileFilter> filters;  // none when there is nothing to save
  size_t preselected = 0;
  std::u16string extension;
  std::u16string fileName;
};

TEST(SaveOfferTest, Table) {
  const auto row = [](std::u16string name, std::initializer_list<AlgoId> algos,
                      RowStatus status = RowStatus::Done) {
    return RowSetup{.name = std::move(name), .digests = Filled(algos, 1), .status = status};
  };
  const RowSetup failed = {.name = u"failed",
                           .digests = Filled({AlgoId::Md5, AlgoId::Sha256}, 1),
                           .status = RowStatus::Failed,
                           .error = 2};
  const RowSetup both = row(u"both", {AlgoId::Md5, AlgoId::Sha256});
  const RowSetup md5 = row(u"md5", {AlgoId::Md5});
  const RowSetup sha = row(u"sha", {AlgoId::Sha256});
  const OfferCase cases[] = {
      // Nothing.
      {"no rows", Md5 | Sha256, {}, {}, {}},
      {"nothing done",
       Md5,
       {row(u"w", {AlgoId::Md5}, RowStatus::Waiting), row(u"h", {AlgoId::Md5}, RowStatus::Hashing),
        row(u"c", {AlgoId::Md5}, RowStatus::Cancelled), failed},
       {},
       {}},
      {"no algorithm that all rows have", Md5 | Sha256, {md5, sha}, {}, {}},
      {"digests of algorithms that are not selected", Crc32, {both}, {}, {}},
      {"two selected, neither of them done",
       Md5,
       {both, row(u"w", {AlgoId::Md5}, RowStatus::Waiting), failed},
       {1, 2},
       {}},
      // Which rows.
      {"one row is saved under its name",
       Md5,
       {both},
       {},
       {OfMd5, Tagged, Csv, Json},
       0,
       u"md5",
       u"both"},
      {"one selected row of three does not limit what is saved",
       Md5,
       {both, md5, both},
       {1},
       {OfMd5, Tagged, Csv, Json},
       0,
       u"md5",
       u"checksums"},
      {"two selected",
       Md5 | Sha256,
       {both, md5, both},
       {0, 2},
       {OfMd5, OfSha256, Tagged, Csv, Json},
       1,
       u"sha256",
       u"checksums"},
      {"two selected, one of them being hashed",
       Md5 | Sha256,
       {md5, row(u"h", {AlgoId::Md5}, RowStatus::Hashing), both},
       {1, 2},
       {OfMd5, OfSha256, Tagged, Csv, Json},
       1,
       u"sha256",
       u"both"},
      {"failed rows are left out",
       Md5,
       {failed, md5},
       {},
       {OfMd5, Tagged, Csv, Json},
       0,
       u"md5",
       u"md5"},
      // Which algorithms.
      {"those that all rows have",
       Md5 | Sha256,
       {both, md5},
       {},
       {OfMd5, Tagged, Csv, Json},
       0,
       u"md5",
       u"checksums"},
      {"SFV comes after the tagged format",
       Crc32 | Sha256,
       {row(u"a", {AlgoId::Crc32, AlgoId::Md5, AlgoId::Sha256})},
       {},
       {OfCrc32, OfSha256, Tagged, Sfv, Csv, Json},
       1,
       u"sha256",
       u"a"},
      {"no SFV without CRC32 in the selection",
       Sha256,
       {row(u"a", {AlgoId::Crc32, AlgoId::Sha256})},
       {},
       {OfSha256, Tagged, Csv, Json},
       0,
       u"sha256",
       u"a"},
      {"every algorithm has its label and extension",
       swr::AllAlgosMask,
       {row(u"a",
            {AlgoId::Crc32, AlgoId::Md5, AlgoId::Sha1, AlgoId::Sha256, AlgoId::Sha384,
             AlgoId::Sha512, AlgoId::Sha3_256, AlgoId::Sha3_384, AlgoId::Sha3_512, AlgoId::Blake3,
             AlgoId::Xxh64, AlgoId::Xxh3_64, AlgoId::Xxh128, AlgoId::Md2, AlgoId::Md4})},
       {},
       {OfCrc32,
        OfMd5,
        {u"SHA-1 checksums, sha256sum format (*.sha1)", u"*.sha1"},
        OfSha256,
        {u"SHA-384 checksums, sha256sum format (*.sha384)", u"*.sha384"},
        {u"SHA-512 checksums, sha256sum format (*.sha512)", u"*.sha512"},
        {u"SHA3-256 checksums, sha256sum format (*.sha3-256)", u"*.sha3-256"},
        {u"SHA3-384 checksums, sha256sum format (*.sha3-384)", u"*.sha3-384"},
        {u"SHA3-512 checksums, sha256sum format (*.sha3-512)", u"*.sha3-512"},
        {u"BLAKE3 checksums, sha256sum format (*.b3)", u"*.b3"},
        {u"XXH64 checksums, sha256sum format (*.xxh64)", u"*.xxh64"},
        {u"XXH3-64 checksums, sha256sum format (*.xxh3)", u"*.xxh3"},
        {u"XXH128 checksums, sha256sum format (*.xxh128)", u"*.xxh128"},
        {u"MD2 checksums, sha256sum format (*.md2)", u"*.md2"},
        {u"MD4 checksums, sha256sum format (*.md4)", u"*.md4"},
        Tagged,
        Sfv,
        Csv,
        Json},
       3,
       u"sha256",
       u"a"},
  };
  for (const OfferCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    window.options.algorithms = test.selected;
    for (const RowSetup& setup : test.rows) AddRow(window, setup).path = u"C:\\d\\" + setup.name;
    window.view.selected = test.selection;
    Save(window);
    if (test.filters.empty()) {
      EXPECT_TRUE(window.desktop.saveRequests.empty());
      EXPECT_EQ(window.desktop.messages, std::vector<TaskDialogSpec>{NothingToSave});
      continue;
    }
    EXPECT_TRUE(window.desktop.messages.empty());
    ASSERT_EQ(window.desktop.saveRequests.size(), 1u);
    const SaveRequest& request = window.desktop.saveRequests[0];
    EXPECT_EQ(request.title, u"Save Checksums");
    EXPECT_EQ(request.filters, test.filters);
    EXPECT_EQ(request.filter, test.preselected);
    EXPECT_EQ(request.defaultExtension, test.extension);
    EXPECT_EQ(request.fileName, test.fileName);
  }
}

TEST(SaveOfferTest, OpensInTheFolderOfTheFirstSavedRow) {
  FakeWindow window;
  window.options.algorithms = Md5;
  AddRow(window, {.name = u"C:\\waiting\\w", .status = RowStatus::Waiting});
  AddRow(window, {.name = u"C:\\first\\a", .digests = {{AlgoId::Md5, 1}}});
  AddRow(window, {.name = u"C:\\second\\b", .digests = {{AlgoId::Md5, 1}}});
  Save(window);
  ASSERT_EQ(window.desktop.saveRequests.size(), 1u);
  EXPECT_EQ(window.desktop.saveRequests[0].folder, u"C:\\first");
}

// ---- What is written.

// Two finished files, one of them in a subfolder.
class SavingTest : public ::testing::Test {
 protected:
  SavingTest() {
    window.options.algorithms = Crc32 | Md5 | Sha256;
    Add(tree.Path(u"a, b.bin"), 0x1A, 7);
    Add(tree.Path(u"sub/\u00E9.bin"), 0x2B, 123456789012);
  }
  void Add(const std::u16string& path, uint8_t fill, uint64_t size) {
    Row& row = window.AddRow(path, size);
    row.status = RowStatus::Done;
    for (const FilledDigest& digest :
         Filled({AlgoId::Crc32, AlgoId::Md5, AlgoId::Sha256, AlgoId::Blake3}, fill)) {
      PutDigest(row, digest);
    }
  }
  // Saves with the filter of this index. Returns the content of the file.
  std::string SaveAs(std::u16string_view name, size_t filter) {
    window.desktop.saveTarget = SaveTarget{tree.Path(name), filter};
    Save(window);
    return ReadBytes(tree.Path(name));
  }

  TempTree tree;
  FakeWindow window;
};

// The filters of SavingTest, in order.
enum Filter : size_t {
  FilterCrc32,
  FilterMd5,
  FilterSha256,
  FilterTagged,
  FilterSfv,
  FilterCsv,
  FilterJson
};

std::string Hex(size_t bytes, uint8_t fill) { return swr::WideToUtf8(FilledHex(bytes, fill)); }

TEST_F(SavingTest, TheBytesOfEachFormat) {
  struct Case {
    const char* description;
    size_t filter;
    std::string bytes;
  };
  const Case cases[] = {
      {"one algorithm", FilterMd5,
       Hex(16, 0x1A) + "  a, b.bin\n" + Hex(16, 0x2B) + "  sub/\xC3\xA9.bin\n"},
      {"SHA-256", FilterSha256,
       Hex(32, 0x1A) + "  a, b.bin\n" + Hex(32, 0x2B) + "  sub/\xC3\xA9.bin\n"},
      {"tagged: only the selected algorithms", FilterTagged,
       "CRC32 (a, b.bin) = 1a1a1a1a\nMD5 (a, b.bin) = " + Hex(16, 0x1A) +
           "\nSHA256 (a, b.bin) = " + Hex(32, 0x1A) +
           "\nCRC32 (sub/\xC3\xA9.bin) = 2b2b2b2b\nMD5 (sub/\xC3\xA9.bin) = " + Hex(16, 0x2B) +
           "\nSHA256 (sub/\xC3\xA9.bin) = " + Hex(32, 0x2B) + "\n"},
      {"SFV", FilterSfv,
       "; Generated by Sumwright\na, b.bin 1A1A1A1A\nsub/\xC3\xA9.bin 2B2B2B2B\n"},
      {"CSV", FilterCsv,
       "Path,Size,CRC32,MD5,SHA-256\n\"a, b.bin\",7,1a1a1a1a," + Hex(16, 0x1A) + "," +
           Hex(32, 0x1A) + "\nsub/\xC3\xA9.bin,123456789012,2b2b2b2b," + Hex(16, 0x2B) + "," +
           Hex(32, 0x2B) + "\n"},
      {"JSON", FilterJson,
       "[\n  {\"path\": \"a, b.bin\", \"size\": 7, \"crc32\": \"1a1a1a1a\", \"md5\": \"" +
           Hex(16, 0x1A) + "\", \"sha256\": \"" + Hex(32, 0x1A) +
           "\"},\n  {\"path\": \"sub/\xC3\xA9.bin\", \"size\": 123456789012, \"crc32\": "
           "\"2b2b2b2b\", \"md5\": \"" +
           Hex(16, 0x2B) + "\", \"sha256\": \"" + Hex(32, 0x2B) + "\"}\n]\n"},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    EXPECT_EQ(SaveAs(u"out", test.filter), test.bytes);
    EXPECT_TRUE(window.desktop.messages.empty());
  }
}

TEST_F(SavingTest, TheFilterDecidesTheFormatAndNotTheName) {
  EXPECT_TRUE(SaveAs(u"list.csv", FilterJson).starts_with("[\n  {\"path\": "));
  EXPECT_TRUE(SaveAs(u"list.json", FilterSfv).starts_with("; Generated by"));
}

// For every combination of options the file has the bytes that the writer produces.
TEST_F(SavingTest, OptionsReachTheWriter) {
  struct Choice {
    size_t filter;
    swr::ExportFormat format;
    std::vector<AlgoId> algos;
  };
  const std::vector<AlgoId> all = {AlgoId::Crc32, AlgoId::Md5, AlgoId::Sha256};
  const Choice choices[] = {
      {FilterCrc32, swr::ExportFormat::Sha256Sum, {AlgoId::Crc32}},
      {FilterMd5, swr::ExportFormat::Sha256Sum, {AlgoId::Md5}},
      {FilterSha256, swr::ExportFormat::Sha256Sum, {AlgoId::Sha256}},
      {FilterTagged, swr::ExportFormat::Tagged, all},
      {FilterSfv, swr::ExportFormat::Sfv, all},
      {FilterCsv, swr::ExportFormat::Csv, all},
      {FilterJson, swr::ExportFormat::Json, all},
  };
  for (const Choice& choice : choices) {
    for (const bool crLf : {false, true}) {
      for (const bool uppercase : {false, true}) {
        SCOPED_TRACE("filter " + std::to_string(choice.filter) + (crLf ? ", CR LF" : "") +
                     (uppercase ? ", capitals" : ""));
        window.options.crLf = crLf;
        window.options.uppercase = uppercase;
        std::vector<swr::ExportRow> rows = {{.name = u"a, b.bin", .size = 7},
                                            {.name = u"sub/\u00E9.bin", .size = 123456789012}};
        for (size_t i = 0; i < rows.size(); ++i) {
          for (const AlgoId id : choice.algos) {
            rows[i].digests.push_back({id, window.rows[i].digests[swr::IndexOf(id)]});
          }
        }
        const std::string rendered =
            swr::RenderChecksums(rows, {.format = choice.format,
                                        .crLf = crLf,
                                        .uppercase = uppercase,
                                        .algo = choice.algos.front(),
                                        .hasAlgo = choice.format == swr::ExportFormat::Sha256Sum});
        const std::string saved = SaveAs(u"out", choice.filter);
        EXPECT_EQ(saved, rendered);
        EXPECT_EQ(saved.find('\r') != saved.npos, crLf);
      }
    }
  }
}

TEST_F(SavingTest, RowsInOtherFoldersHaveFullPaths) {
  const auto slashes = [](std::u16string path) {
    std::ranges::replace(path, static_cast<char16_t>(swr::JoinPath(u"x", u"y")[1]), u'/');
    return swr::WideToUtf8(path);
  };
  tree.AddFolder(u"sub");
  EXPECT_EQ(SaveAs(u"sub/list.md5", FilterMd5), Hex(16, 0x1A) + "  " +
                                                    slashes(tree.Path(u"a, b.bin")) + "\n" +
                                                    Hex(16, 0x2B) + "  \xC3\xA9.bin\n");
}

TEST_F(SavingTest, SavedFilesCanBeVerified) {
  tree.AddFile(u"a, b.bin", "abc");
  tree.AddFile(u"sub/\u00E9.bin", "");
  FakeWindow real;
  real.algorithms.Select(Crc32 | Sha256);
  real.adding.AddPaths({tree.Path(u"a, b.bin"), tree.Path(u"sub/\u00E9.bin")});
  real.HashQueuedFiles();
  for (size_t filter = 0; filter < 4; ++filter) {
    SCOPED_TRACE(filter);
    const std::u16string path = tree.Path(u"list");
    real.desktop.saveTarget = SaveTarget{path, filter};
    Save(real);
    FakeWindow next;
    next.verification.VerifyFile(path);
    next.HashQueuedFiles();
    const size_t lines = filter == 2 ? 4 : 2;  // tagged: one for each digest
    EXPECT_EQ(next.Result(),
              (ResultLine{lines == 4 ? u"All 4 files are OK." : u"All 2 files are OK.",
                          ResultKind::Good}));
    EXPECT_FALSE(next.view.banner);
  }
}

TEST_F(SavingTest, SelectedRowsInTheOrderOfTheList) {
  Add(tree.Path(u"c.bin"), 0x3C, 1);
  window.view.selected = {0, 2};
  EXPECT_EQ(SaveAs(u"out", FilterMd5),
            Hex(16, 0x1A) + "  a, b.bin\n" + Hex(16, 0x3C) + "  c.bin\n");
}

TEST_F(SavingTest, AnOldFileIsReplacedCompletely) {
  tree.AddFile(u"out", std::string(5000, 'x'));
  EXPECT_EQ(SaveAs(u"out", FilterSfv),
            "; Generated by Sumwright\na, b.bin 1A1A1A1A\nsub/\xC3\xA9.bin 2B2B2B2B\n");
}

TEST_F(SavingTest, CancellingWritesNothing) {
  Save(window);
  EXPECT_EQ(window.desktop.saveRequests.size(), 1u);
  EXPECT_TRUE(window.desktop.messages.empty());
  // An index that is not a filter is treated as a cancel.
  EXPECT_EQ(SaveAs(u"out", 7), "(no such file)");
  EXPECT_TRUE(window.desktop.messages.empty());
}

// ---- Failures.

// Everything that the window shows.
std::vector<std::u16string> VisibleTexts(const FakeWindow& window) {
  std::vector<std::u16string> texts = {window.view.resultLine, window.view.details,
                                       window.view.statusText, window.view.banner.value_or(u"-")};
  for (size_t row = 0; row < window.rows.Size(); ++row) {
    for (size_t column = 0; column < window.columns.Defs().size(); ++column) {
      texts.push_back(window.cells.TextOf(row, column));
    }
  }
  return texts;
}

TEST_F(SavingTest, FailuresAreReportedAndChangeNothing) {
  uint32_t noSuchFolder = 0;  // the systems differ
  ASSERT_FALSE(swr::QueryFileInfo(swr::ToLongPath(tree.Path(u"nowhere/out")), noSuchFolder));
  struct Case {
    const char* description;
    std::u16string name;
    std::vector<swr::testing::PlannedFault> faults;
    uint32_t error;
    std::string left;  // on the disk
  };
  const Case cases[] = {
      {"a full disk",
       u"out",
       {{.call = SystemCall::WriteFile, .code = swr::ErrorDiskFull}},
       swr::ErrorDiskFull,
       ""},
      {"a folder that nobody may write to",
       u"out",
       {{.call = SystemCall::CreateNewFile, .code = swr::ErrorAccessDenied}},
       swr::ErrorAccessDenied,
       "(as before)"},
      {"a file that another program holds open",
       u"out",
       {{.call = SystemCall::CreateNewFile, .code = swr::ErrorSharingViolation}},
       swr::ErrorSharingViolation,
       "(as before)"},
      {"no such folder", u"nowhere/out", {}, noSuchFolder, "(no such file)"},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    swr::testing::WriteBytes(tree.Path(u"out"), "(as before)");
    window.banners.Show(BannerKind::SkippedLines, u"a banner", u"");
    window.view.selected = {0};
    window.details.Refresh();
    window.desktop.messages.clear();
    const auto before = VisibleTexts(window);
    const InstalledFaults faults(test.faults);
    const std::u16string path = tree.Path(test.name);
    const std::string left = SaveAs(test.name, FilterTagged);
    EXPECT_EQ(window.desktop.messages,
              (std::vector<TaskDialogSpec>{
                  MessageDialog(TaskDialogIcon::Error, u"The checksums couldn't be saved.",
                                path + u"\n\n" + swr::FormatErrorText(test.error) + u".")}));
    EXPECT_EQ(left, test.left);
    EXPECT_EQ(VisibleTexts(window), before);
    EXPECT_EQ(window.view.selected, std::vector<size_t>{0});
    EXPECT_TRUE(window.queue.jobs.empty());
  }
}

TEST_F(SavingTest, SuccessIsSilent) {
  window.view.selected = {1};
  window.details.Refresh();
  const auto before = VisibleTexts(window);
  EXPECT_TRUE(SaveAs(u"out", FilterJson).starts_with("[\n  {\"path\": "));
  EXPECT_EQ(VisibleTexts(window), before);
  EXPECT_TRUE(window.desktop.messages.empty());
  EXPECT_EQ(window.view.selected, std::vector<size_t>{1});
}

}  // namespace
}  // namespace app::testing
