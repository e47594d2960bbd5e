#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/hash/digest_text.h"
#include "swr/system/error_codes.h"
#include "swr/text/display_text.h"
#include "swr/text/encoding.h"
#include "swr/text/text.h"
#include "tests/support/abc_lists.h"
#include "tests/support/fake_window.h"
#include "tests/support/fault_plan.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::AlgoMask;
using swr::MaskOf;
using swr::testing::InstalledFaults;

constexpr AlgoMask Of32 =
    MaskOf(AlgoId::Sha256) | MaskOf(AlgoId::Sha3_256) | MaskOf(AlgoId::Blake3);

// ---- From lines to rows.

TEST_F(VerificationTest, EachLineBecomesARowThatKnowsItsDigest) {
  const std::u16string list =
      Load(u"list.txt", "# a comment\n" + Line(AbcSha256, "a.bin") + "\n" +
                            "MD5 (b.bin) = " + AbcMd5 + "\n" + "c.bin " + AbcCrc32 + "\n");
  ASSERT_EQ(window.rows.Size(), 3u);
  struct Expected {
    std::u16string name;
    std::string digest;
    std::vector<AlgoId> algos;
    uint32_t line;
    AlgoMask queued;
  };
  const Expected expected[] = {
      {u"a.bin",
       AbcSha256,
       {AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3},
       2,
       swr::DefaultAlgoMask | Of32},
      {u"b.bin", AbcMd5, {AlgoId::Md5}, 4, swr::DefaultAlgoMask},
      {u"c.bin", AbcCrc32, {AlgoId::Crc32}, 5, swr::DefaultAlgoMask | MaskOf(AlgoId::Crc32)},
  };
  ASSERT_EQ(window.queue.jobs.size(), 3u);
  for (size_t i = 0; i < 3; ++i) {
    const Row& row = window.rows[i];
    SCOPED_TRACE(swr::WideToUtf8(expected[i].name));
    EXPECT_EQ(row.Name(), expected[i].name);
    EXPECT_EQ(row.Path(), tree.Path(expected[i].name));
    EXPECT_EQ(row.Folder(), tree.Root());
    EXPECT_EQ(row.size, 3u);
    EXPECT_EQ(row.status, RowStatus::Waiting);
    EXPECT_TRUE(row.hasExpected);
    EXPECT_EQ(swr::BytesToHex(row.extras->expectedBytes, false), expected[i].digest);
    EXPECT_EQ(row.extras->expectedAlgos, expected[i].algos);
    EXPECT_EQ(*row.extras->checksumFile, list);
    EXPECT_EQ(row.extras->checksumLine, expected[i].line);
    EXPECT_EQ(window.queue.jobs[i].rowId, row.id);
    EXPECT_EQ(window.queue.jobs[i].mask, expected[i].queued);
    EXPECT_EQ(window.rows.Find(row.id), &row);
  }
  EXPECT_EQ(window.view.rowCount, 3u);
  EXPECT_EQ(window.view.columns.size(), 7u) << "candidates have no columns";
  EXPECT_EQ(window.options.algorithms, swr::DefaultAlgoMask);
  EXPECT_FALSE(window.view.banner);
  EXPECT_TRUE(window.desktop.messages.empty());
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 3 files...", ResultKind::Busy}));

  window.HashQueuedFiles();
  EXPECT_EQ(StatusCells(), (TextList{u"OK (SHA-256)", u"OK (MD5)", u"OK (CRC32)"}));
  EXPECT_EQ(window.Result(), (ResultLine{u"All 3 files are OK.", ResultKind::Good}));
}

TEST_F(VerificationTest, EachFileGetsItsVerdict) {
  tree.AddFile(u"b.bin", "abd");
  Load(u"SHA256SUMS", Line(AbcSha256, "a.bin") + Line(AbcSha256, "b.bin") +
                          Line(AbcSha256, "gone.bin") + Line(AbcSha256, "no/such/folder/x") +
                          Line(AbcSha256, "c.bin"));
  const InstalledFaults faults(
      {{.call = swr::SystemCall::OpenFile, .nth = 3, .code = swr::ErrorSharingViolation}});
  window.HashQueuedFiles();
  EXPECT_EQ(StatusCells(), (TextList{u"OK (SHA-256)", u"FAILED", u"Missing", u"Missing",
                                     swr::FormatErrorText(swr::ErrorSharingViolation)}));
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 1 OK, 1 FAILED, 2 missing, 1 unreadable.",
                        ResultKind::Bad}));
  const RowTint tints[] = {RowTint::Good, RowTint::Bad, RowTint::Bad, RowTint::Bad, RowTint::Bad};
  for (size_t i = 0; i < std::size(tints); ++i) EXPECT_EQ(window.cells.TintOf(i), tints[i]) << i;
}

TEST_F(VerificationTest, EachRowIsVerifiedWithItsOwnAlgorithm) {
  Load(u"mixed.txt", Line(AbcSha3, "a.bin") + Line(AbcBlake3, "a.bin") + Line(AbcMd5, "a.bin") +
                         "SHA1 (a.bin) = " + AbcSha1 + "\n" + "BLAKE3 (a.bin) = " + AbcSha256 +
                         "\n");
  window.HashQueuedFiles();
  EXPECT_EQ(StatusCells(),
            (TextList{u"OK (SHA3-256)", u"OK (BLAKE3)", u"OK (MD5)", u"OK (SHA-1)", u"FAILED"}));
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 4 OK, 1 FAILED.", ResultKind::Bad}));
}

TEST_F(VerificationTest, AMissingFileIsARowWithoutAJob) {
  Load(u"SHA256SUMS", Line(AbcSha256, "gone.bin"));
  ASSERT_EQ(window.rows.Size(), 1u);
  EXPECT_EQ(window.rows[0].status, RowStatus::Failed);
  EXPECT_EQ(window.rows[0].error, swr::ErrorFileNotFound);
  EXPECT_TRUE(window.queue.jobs.empty());
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 0 OK, 1 missing.", ResultKind::Bad}));
}

TEST_F(VerificationTest, NamesAreRelativeToTheChecksumFile) {
  tree.AddFile(u"lists/sub/d.bin", "abc");
  const std::u16string absolute = tree.Path(u"c.bin");
  Load(u"lists/SHA256SUMS",
       Line(AbcSha256, "sub/d.bin") + Line(AbcSha256, "./sub/d.bin") + Line(AbcSha256, "../a.bin") +
           Line(AbcSha256, swr::WideToUtf8(absolute)) + Line(AbcSha256, "a.bin"));
  window.HashQueuedFiles();
  EXPECT_EQ(StatusCells(), (TextList{u"OK (SHA-256)", u"OK (SHA-256)", u"OK (SHA-256)",
                                     u"OK (SHA-256)", u"Missing"}));
  EXPECT_EQ(window.rows[1].Path(), tree.Path(u"lists/sub/d.bin"));
  EXPECT_EQ(window.rows[2].Path(), tree.Path(u"a.bin"));
}

TEST_F(VerificationTest, CancelledRowsAreReportedAsNotChecked) {
  Load(u"SHA256SUMS",
       Line(AbcSha256, "a.bin") + Line(AbcSha256, "b.bin") + Line(AbcSha256, "c.bin"));
  ASSERT_FALSE(window.queue.jobs.empty());
  const HashJob first = window.queue.jobs.front();
  window.queue.jobs.pop_front();
  window.Report(first, swr::HashFile(first.path->Text(), first.mask, {}));
  window.edits.CancelAll();
  EXPECT_EQ(StatusCells(), (TextList{u"OK (SHA-256)", u"Cancelled", u"Cancelled"}));
  EXPECT_EQ(window.Result(),
            (ResultLine{u"Not all files match: 1 OK, 2 not checked.", ResultKind::Bad}));
  EXPECT_EQ(window.cells.TintOf(0), RowTint::Good);
  EXPECT_EQ(window.cells.TintOf(1), RowTint::None);
}

TEST_F(VerificationTest, TheSelectionIsClearedAndTheDetailsAreUpdated) {
  window.adding.AddPaths({tree.Path(u"a.bin")});
  ASSERT_EQ(window.view.selected.size(), 1u);
  window.view.statusText = u"stale";
  Load(u"SHA256SUMS", Line(AbcSha256, "b.bin") + Line(AbcSha256, "c.bin"));
  EXPECT_TRUE(window.view.selected.empty());
  EXPECT_EQ(window.view.details, u"3 files. Select one to see its details.");
  EXPECT_NE(window.view.statusText, u"stale");
}

TEST_F(VerificationTest, LoadingQueuesCancelledRowsAgain) {
  window.adding.AddPaths({tree.Path(u"a.bin")});
  window.edits.CancelAll();
  Load(u"SHA256SUMS", Line(AbcSha256, "b.bin"));
  ASSERT_EQ(window.queue.jobs.size(), 2u);
  EXPECT_EQ(window.queue.jobs[0].path->Text(), tree.Path(u"a.bin"));
  EXPECT_EQ(window.StatusCell(0), u"Waiting");
}

// ---- Unreadable files, and files without checksums.

TEST_F(VerificationTest, AnUnreadableFileIsReportedAndNothingElseHappens) {
  const std::u16string missing = tree.Path(u"gone.sha256");
  const std::u16string shut = tree.AddFile(u"shut.sha256", Line(AbcSha256, "a.bin"));
  window.adding.AddPaths({tree.Path(u"a.bin")});
  const int jobs = static_cast<int>(window.queue.jobs.size());
  window.banners.Show(BannerKind::ChecksumFileOffer, u"offer", u"payload");
  window.verification.VerifyFile(missing);
  {
    const InstalledFaults faults(
        {{.call = swr::SystemCall::OpenFile, .code = swr::ErrorAccessDenied}});
    window.verification.VerifyFile(shut);
  }
  const std::u16string instruction = u"The checksum file can't be read.";
  EXPECT_EQ(
      window.desktop.messages,
      (std::vector<TaskDialogSpec>{
          MessageDialog(TaskDialogIcon::Error, instruction,
                        missing + u"\n\n" + swr::FormatErrorText(swr::ErrorFileNotFound) + u"."),
          MessageDialog(TaskDialogIcon::Error, instruction,
                        shut + u"\n\n" + swr::FormatErrorText(swr::ErrorAccessDenied) + u"."),
      }));
  EXPECT_EQ(Names(), TextList{u"a.bin"});
  EXPECT_EQ(window.view.selected, std::vector<size_t>{0});
  EXPECT_EQ(static_cast<int>(window.queue.jobs.size()), jobs);
  EXPECT_EQ(window.view.banner, u"offer");
}

TEST_F(VerificationTest, AFileWithoutChecksumsIsReportedAndNothingElseHappens) {
  struct Case {
    const char* description;
    std::string text;
  };
  const Case cases[] = {
      {"empty", ""},
      {"only a UTF-8 byte-order mark", "\xEF\xBB\xBF"},
      {"blank lines", "\r\n \t\n\n"},
      {"comments", "; made by hand\n# nothing in here\n"},
      {"rubbish", "hello\nnothing to see here\n<html>\n"},
      {"only a signature", "-----BEGIN PGP SIGNATURE-----\n" + Line(AbcSha256, "a.bin") +
                               "-----END PGP SIGNATURE-----\n"},
      {"a hash without a name", AbcSha256 + "\n"},
      {"base64", "ungWv48Bz-pBQUDeXa4iI7ADYaOWF3qctBD_YfIAFa0=  a.bin\n"},
      {"an unknown algorithm", "SHA1024 (a.bin) = " + AbcSha256 + "\n"},
      {"a digest of the wrong length", "SHA256 (a.bin) = " + AbcSha1 + "\n"},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow other;
    AddRow(other, {.name = u"old", .digests = {{AlgoId::Md5, 1}}});
    other.view.selected = {0};
    const std::u16string path = tree.AddFile(u"list.txt", test.text);
    other.verification.VerifyFile(path);
    EXPECT_EQ(other.desktop.messages,
              (std::vector<TaskDialogSpec>{MessageDialog(
                  TaskDialogIcon::Warning, u"No checksums were found in this file.",
                  path + u"\n\nChecksum files have lines like \"<hash>  <file name>\" or "
                         u"\"SHA256 (<file name>) = <hash>\".")}));
    EXPECT_EQ(other.rows.Size(), 1u);
    EXPECT_EQ(other.view.selected, std::vector<size_t>{0});
    EXPECT_FALSE(other.view.banner) << "skipped lines are not reported";
    EXPECT_TRUE(other.queue.jobs.empty());
    EXPECT_EQ(other.Result(), (ResultLine{u"", ResultKind::None}));
  }
}

// ---- Rows that are in the list already.

TEST_F(VerificationTest, APlainRowOfTheSamePathIsReplacedAndHashedAgain) {
  window.adding.AddPaths({tree.Path(u"a.bin"), tree.Path(u"b.bin")});
  window.HashQueuedFiles();
  const uint64_t oldId = window.rows[0].id;
  const uint64_t keptId = window.rows[1].id;
  Load(u"SHA256SUMS", Line(AbcSha256, "a.bin"));

  EXPECT_EQ(Names(), (TextList{u"b.bin", u"a.bin"}));
  EXPECT_EQ(window.rows[0].id, keptId);
  EXPECT_EQ(window.StatusCell(0), u"Done");
  EXPECT_EQ(window.StatusCell(1), u"Waiting");
  EXPECT_EQ(window.queue.removed, std::vector<uint64_t>{oldId});
  EXPECT_EQ(window.rows.Find(oldId), nullptr);
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.queue.jobs[0].mask, swr::DefaultAlgoMask)
      << "the name SHA256SUMS implies SHA-256";
  window.HashQueuedFiles();
  EXPECT_EQ(window.Result(), (ResultLine{u"The file is OK.", ResultKind::Good}));
}

TEST_F(VerificationTest, TheJobOfAReplacedRowIsDroppedAndItsLateResultIgnored) {
  window.adding.AddPaths({tree.Path(u"a.bin")});
  ASSERT_FALSE(window.queue.jobs.empty());
  const HashJob running = window.queue.jobs.front();
  Load(u"SHA256SUMS", Line(AbcSha256, "a.bin"));
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_NE(window.queue.jobs[0].rowId, running.rowId);
  window.Report(running, {});
  EXPECT_EQ(window.StatusCell(0), u"Waiting");
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 1 files...", ResultKind::Busy}));
}

TEST_F(VerificationTest, LoadingTwiceDoublesTheRows) {
  const std::u16string list =
      Load(u"SHA256SUMS", Line(AbcSha256, "a.bin") + Line(AbcSha256, "b.bin"));
  window.HashQueuedFiles();
  window.verification.VerifyFile(list);
  EXPECT_EQ(Names(), (TextList{u"a.bin", u"b.bin", u"a.bin", u"b.bin"}));
  EXPECT_TRUE(window.queue.removed.empty());
  EXPECT_EQ(window.view.scrolledTo, 2u);
  EXPECT_EQ(window.queue.jobs.size(), 2u) << "only the new rows";
  EXPECT_EQ(window.Result(), (ResultLine{u"Verifying 4 files...", ResultKind::Busy}));
  window.HashQueuedFiles();
  EXPECT_EQ(window.Result(), (ResultLine{u"All 4 files are OK.", ResultKind::Good}));
}

struct ReplacedCase {
  const char* description;
  TextList plain;         // rows in the list, below the tree
  TextList listedBefore;  // rows of an older checksum file, after those
  TextList lines;         // of the checksum file
  TextList names;         // of the rows afterwards
  size_t scrolledTo;
};

TEST_F(VerificationTest, ReplacementAndScrolling) {
  const ReplacedCase cases[] = {
      {"an empty list", {}, {}, {u"a", u"b"}, {u"a", u"b"}, 0},
      {"other paths are kept", {u"x", u"y"}, {}, {u"a", u"b"}, {u"x", u"y", u"a", u"b"}, 2},
      {"the same path is replaced", {u"a", u"y"}, {}, {u"a"}, {u"y", u"a"}, 1},
      {"the list becomes shorter", {u"a", u"a", u"a"}, {}, {u"a"}, {u"a"}, 0},
      {"one row less, and the last one is shown", {u"a", u"a", u"y"}, {}, {u"a"}, {u"y", u"a"}, 1},
      {"the list keeps its length", {u"a", u"b"}, {}, {u"b", u"a"}, {u"b", u"a"}, 1},
      {"replaced, and more than one new", {u"a", u"y"}, {}, {u"a", u"b"}, {u"y", u"a", u"b"}, 2},
      {"letter case does not matter",
       {u"\u00C9", u"A"},
       {},
       {u"a", u"\u00E9"},
       {u"a", u"\u00E9"},
       1},
      {"a row of a checksum file is kept", {u"a"}, {u"a", u"b"}, {u"a"}, {u"a", u"b", u"a"}, 2},
      {"two lines of one name make two rows", {u"a"}, {}, {u"a", u"a"}, {u"a", u"a"}, 1},
      {"the same name in another folder is another path",
       {u"sub/a", u"a"},
       {},
       {u"a"},
       {u"a", u"a"},
       1},
  };
  for (const ReplacedCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow other;
    for (const auto* names : {&test.plain, &test.listedBefore}) {
      for (const std::u16string& name : *names) {
        Row& row = other.AddRow(tree.Path(name));
        if (names == &test.listedBefore) Expect(row, FilledBytes(32, 1), {AlgoId::Sha256});
      }
    }
    std::string text;
    for (const std::u16string& line : test.lines) text += Line(AbcSha256, swr::WideToUtf8(line));
    other.verification.VerifyFile(tree.AddFile(u"list", text));
    TextList names;
    for (const Row& row : other.rows) names.push_back(row.Name());
    EXPECT_EQ(names, test.names);
    EXPECT_EQ(other.view.scrolledTo, test.scrolledTo);
    EXPECT_EQ(other.view.rowCount, test.names.size());
    for (const Row& row : other.rows) EXPECT_EQ(other.rows.Find(row.id), &row);
  }
}

// The rule in its simplest form: each line removes all rows of its path that have no expected
// digest from a checksum file.
struct ReferenceRow {
  std::u16string path;
  uint64_t id = 0;    // of a row from before
  uint32_t line = 0;  // of a new one
  bool expected = false;
};

void LoadByReference(std::vector<ReferenceRow>& rows, const std::u16string& path, uint32_t line,
                     std::vector<uint64_t>& removed) {
  for (size_t i = 0; i < rows.size();) {
    if (!rows[i].expected && swr::EqualsNoCase(rows[i].path, path)) {
      removed.push_back(rows[i].id);
      rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(i));
    } else {
      ++i;
    }
  }
  rows.push_back({.path = path, .line = line, .expected = true});
}

TEST_F(VerificationTest, ReplacesTheSameRowsAsTheReferenceModel) {
  // Letters whose case mapping differs between systems: the Kelvin sign and k, long s and s, the
  // dotless and the dotted i, sharp s, the final sigma, a digraph in three cases, the micro sign, a
  // letter outside the first plane.
  const TextList names = {u"a",      u"A",      u"ab",     u"aB",         u"k",         u"K",
                          u"\u212A", u"s",      u"S",      u"\u017F",     u"i",         u"I",
                          u"\u0131", u"\u0130", u"\u00DF", u"\u1E9E",     u"ss",        u"SS",
                          u"\u03C3", u"\u03A3", u"\u03C2", u"\u01C4",     u"\u01C5",    u"\u01C6",
                          u"\u00B5", u"\u03BC", u"\u039C", u"\u00E9",     u"\u00C9",    u"\u0436",
                          u"\u0416", u"\u00FF", u"\u0178", u"\U00010428", u"\U00010400"};
  std::mt19937 random(20261120);
  const auto pick = [&](size_t count) { return static_cast<size_t>(random() % count); };
  for (int round = 0; round < 150; ++round) {
    SCOPED_TRACE(round);
    FakeWindow other;
    std::vector<ReferenceRow> expected;
    const size_t poolSize = 2 + pick(names.size() - 1);
    const size_t poolStart = pick(names.size());
    const auto name = [&] { return names[(poolStart + pick(poolSize)) % names.size()]; };
    for (size_t i = pick(30); i > 0; --i) {
      Row& row = other.AddRow(tree.Path(name()));
      if (pick(3) == 0) Expect(row, FilledBytes(32, 1), {AlgoId::Sha256});
      expected.push_back({.path = row.Path(), .id = row.id, .expected = row.hasExpected});
    }
    std::vector<uint64_t> removed;
    std::string text;
    const auto lines = static_cast<uint32_t>(1 + pick(20));
    for (uint32_t line = 1; line <= lines; ++line) {
      const std::u16string listed = name();
      text += Line(AbcSha256, swr::WideToUtf8(listed));
      LoadByReference(expected, tree.Path(listed), line, removed);
    }
    other.verification.VerifyFile(tree.AddFile(u"the list", text));

    ASSERT_EQ(other.rows.Size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
      const Row& row = other.rows[i];
      EXPECT_EQ(row.Path(), expected[i].path) << i;
      EXPECT_EQ(row.hasExpected, expected[i].expected) << i;
      if (expected[i].id != 0) {
        EXPECT_EQ(row.id, expected[i].id) << i;
      } else {
        EXPECT_EQ(row.extras->checksumLine, expected[i].line) << i;
      }
    }
    std::ranges::sort(removed);
    std::ranges::sort(other.queue.removed);
    EXPECT_EQ(other.queue.removed, removed);
  }
}

// ---- The command.

TEST_F(VerificationTest, TheCommandLoadsEachChosenFileInTurn) {
  const std::u16string first = tree.AddFile(u"1.sha256", Line(AbcSha256, "a.bin"));
  const std::u16string none = tree.AddFile(u"2.txt", "rubbish\n");
  const std::u16string third = tree.AddFile(u"3.md5", Line(AbcMd5, "b.bin"));
  window.desktop.picked = {first, none, third};
  EXPECT_TRUE(window.commands.Run(ID_VERIFY_FILE));
  EXPECT_EQ(window.desktop.pickerTitle, u"Verify Checksum File");
  EXPECT_EQ(
      window.desktop.pickerFilters,
      (std::vector<FileFilter>{
          {u"Checksum files",
           u"*.sha256;*.sha1;*.md5;*.sha512;*.sha384;*.sfv;*.b3;*.blake3;*.xxh64;*.xxh3;*.xxh128;"
           u"*.sha3-256;*.sha3-384;*.sha3-512;*.digests;*SUMS;*SUMS.txt;*sums.txt;*.txt;*.asc"},
          {u"All files", u"*.*"}}));
  EXPECT_EQ(Names(), (TextList{u"a.bin", u"b.bin"}));
  ASSERT_EQ(window.desktop.messages.size(), 1u);
  EXPECT_EQ(window.desktop.messages[0].mainInstruction, u"No checksums were found in this file.");
  window.HashQueuedFiles();
  EXPECT_EQ(window.Result(), (ResultLine{u"All 2 files are OK.", ResultKind::Good}));
}

TEST_F(VerificationTest, ACancelledPickerDoesNothing) {
  EXPECT_TRUE(window.commands.Run(ID_VERIFY_FILE));
  EXPECT_TRUE(window.rows.IsEmpty());
  EXPECT_TRUE(window.desktop.messages.empty());
}

}  // namespace
}  // namespace app::testing
