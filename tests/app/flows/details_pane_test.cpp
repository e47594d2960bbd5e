#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/error_codes.h"
#include "swr/system/local_time.h"
#include "swr/text/display_text.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;
using swr::SignatureState;

// One row and its details.
struct OneRow {
  OneRow() : row(window.AddRow(u"C:\\Downloads\\setup.exe", 5)) {
    row.status = RowStatus::Done;
    row.extras.Make().zone = swr::ZoneRecord{};
    row.extras.Make().signature = swr::SignatureResult{.state = SignatureState::NotSigned};
    window.view.selected = {0};
  }
  std::u16string Details() {
    window.details.Refresh();
    return window.view.details;
  }

  FakeWindow window;
  Row& row;
};

const std::u16string Head = u"setup.exe\r\nFolder:\tC:\\Downloads";
const std::u16string Signature = u"\r\nSignature:\tNot signed";

// ---- The number of selected rows.

TEST(DetailsTest, NothingSelectedAndSeveral) {
  struct Case {
    const char* description;
    std::vector<uint64_t> sizes;
    std::vector<size_t> selected;
    std::u16string text;
    DetailButtons buttons;
  };
  const Case cases[] = {
      {"no rows", {}, {}, u"", {}},
      {"one row, not selected", {7}, {}, u"1 files. Select one to see its details.", {}},
      {"three rows", {7, 8, 9}, {}, u"3 files. Select one to see its details.", {}},
      {"two selected",
       {7, 8, 9},
       {0, 2},
       u"2 files selected, 16 bytes in total.",
       {.copyHashes = true}},
      {"a single byte in total", {1, 0}, {0, 1}, u"2 files selected, 1 byte in total.", {true}},
      {"large ones",
       {0xFFFFFFFF, 0xFFFFFFFF, 2},
       {0, 1, 2},
       u"3 files selected, 8.0 GB in total.",
       {.copyHashes = true}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    for (const uint64_t size : test.sizes) window.AddRow(u"x", size);
    window.view.selected = test.selected;
    window.details.Refresh();
    EXPECT_EQ(window.view.details, test.text);
    EXPECT_EQ(window.view.detailButtons.copyHashes, test.buttons.copyHashes);
    EXPECT_FALSE(window.view.detailButtons.lookUpOnline);
    EXPECT_FALSE(window.view.detailButtons.openFolder);
    EXPECT_TRUE(window.desktop.signatureChecks.empty())
        << "no signature is checked for several rows";
    EXPECT_TRUE(window.desktop.originReads.empty());
  }
}

TEST(DetailsTest, FailedRowsAreIncludedWithTheirSize) {
  FakeWindow window;
  window.AddRow(u"a", 3);
  AddRow(window, {.name = u"b", .status = RowStatus::Failed, .error = 2});
  window.view.selected = {0, 1};
  window.details.Refresh();
  EXPECT_EQ(window.view.details, u"2 files selected, 103 bytes in total.");
}

// ---- One row.

struct OneRowCase {
  const char* description;
  std::function<void(OneRow&)> setup;
  std::u16string text;
};

void CheckOneRow(const std::vector<OneRowCase>& cases) {
  for (const OneRowCase& test : cases) {
    SCOPED_TRACE(test.description);
    OneRow one;
    test.setup(one);
    const std::u16string text = one.Details();
    EXPECT_EQ(text, test.text) << swr::WideToUtf8(text);
  }
}

TEST(DetailsTest, Sizes) {
  const auto of = [](uint64_t size) { return [size](OneRow& one) { one.row.size = size; }; };
  const auto text = [](std::u16string_view size) {
    return Head + u"\r\nSize:\t" + std::u16string(size) + Signature;
  };
  CheckOneRow({
      {"empty", of(0), text(u"0 bytes")},
      {"one", of(1), text(u"1 byte")},
      {"the largest without a short form", of(1023), text(u"1023 bytes")},
      {"the smallest with a short form", of(1024), text(u"1.0 KB (1,024 bytes)")},
      {"six digits", of(999999), text(u"977 KB (999,999 bytes)")},
      {"seven digits", of(1572864), text(u"1.5 MB (1,572,864 bytes)")},
      {"ten digits", of(4294967296), text(u"4.0 GB (4,294,967,296 bytes)")},
      {"the largest", of(18446744073709551615U),
       text(u"16384 PB (18,446,744,073,709,551,615 bytes)")},
  });
}

TEST(DetailsTest, TimesAreLocalAndPadded) {
  // A time in summer and one in winter, in units of 100 ns since 1601.
  for (const swr::FileTime time : {134129610000000000U, 127489752060000000U}) {
    OneRow one;
    one.row.modified = time;
    const auto local = swr::ToLocalTime(time);
    ASSERT_TRUE(local);
    char expected[64];
    std::snprintf(expected, sizeof expected, "%04u-%02u-%02u %02u:%02u", local->year, local->month,
                  local->day, local->hour, local->minute);
    EXPECT_EQ(one.Details(),
              Head + u"\r\nSize:\t5 bytes\r\nModified:\t" + swr::Utf8ToWide(expected) + Signature);
  }
}

TEST(DetailsTest, DigestsAreInCatalogueOrder) {
  CheckOneRow({
      {"none", [](OneRow&) {}, Head + u"\r\nSize:\t5 bytes" + Signature},
      {"digests of algorithms that are not selected",
       [](OneRow& one) {
         one.window.algorithms.Select(MaskOf(AlgoId::Sha512));
         one.window.queue.jobs.clear();
         for (const FilledDigest& digest :
              Filled({AlgoId::Md2, AlgoId::Xxh3_64, AlgoId::Crc32, AlgoId::Sha3_256}, 0xA5)) {
           PutDigest(one.row, digest);
         }
       },
       Head + u"\r\nSize:\t5 bytes\r\nCRC32:\ta5a5a5a5\r\nSHA3-256:\t" + FilledHex(32, 0xA5) +
           u"\r\nXXH3-64:\ta5a5a5a5a5a5a5a5\r\nMD2:\t" + FilledHex(16, 0xA5) + Signature},
      {"in upper case",
       [](OneRow& one) {
         PutDigest(one.row, {AlgoId::Crc32, 0xBE});
         one.window.commands.Run(ID_UPPERCASE);
       },
       Head + u"\r\nSize:\t5 bytes\r\nCRC32:\tBEBEBEBE" + Signature},
  });
}

TEST(DetailsTest, ExpectedDigests) {
  const auto expect = [](std::u16string file, uint32_t line) {
    return [file, line](OneRow& one) {
      Expect(one.row, {0xAB, 0xCD, 0xEF, 0x01}, {AlgoId::Crc32});
      one.row.extras.Make().checksumFile = std::make_shared<const std::u16string>(file);
      one.row.extras.Make().checksumLine = line;
    };
  };
  const std::u16string start = Head + u"\r\nSize:\t5 bytes" + Signature + u"\r\nExpected:\t";
  CheckOneRow({
      {"backslashes", expect(u"C:\\lists\\SHA256SUMS", 12),
       start + u"abcdef01 (SHA256SUMS, line 12)"},
      {"slashes", expect(u"/lists/a.sfv", 1), start + u"abcdef01 (a.sfv, line 1)"},
      {"neither", expect(u"a.sfv", 100000), start + u"abcdef01 (a.sfv, line 100000)"},
      {"in upper case",
       [&](OneRow& one) {
         expect(u"C:\\a.sfv", 2)(one);
         one.window.commands.Run(ID_UPPERCASE);
       },
       start + u"ABCDEF01 (a.sfv, line 2)"},
  });
}

TEST(DetailsTest, AFailedRowShowsItsError) {
  const auto fail = [](OneRow& one, uint32_t error) {
    one.row.status = RowStatus::Failed;
    one.row.error = error;
    one.row.modified = 134129610000000000U;
    one.row.extras.Make().signature.reset();
    one.row.extras.Make().zone.reset();
    PutDigest(one.row, {AlgoId::Crc32, 1});
  };
  const auto error = [](uint32_t code) {
    return Head + u"\r\nError:\t" + swr::FormatErrorText(code) + u".";
  };
  CheckOneRow({
      {"missing", [&](OneRow& one) { fail(one, 2); }, error(2)},
      {"denied", [&](OneRow& one) { fail(one, 5); }, error(5)},
      {"an error without a text", [&](OneRow& one) { fail(one, 3735928559); },
       Head + u"\r\nError:\tError 3735928559."},
      {"with an expected digest",
       [&](OneRow& one) {
         fail(one, 2);
         Expect(one.row, {0x12, 0x34}, {AlgoId::Crc32});
         one.row.extras.Make().checksumFile = std::make_shared<const std::u16string>(u"C:\\SUMS");
         one.row.extras.Make().checksumLine = 3;
       },
       error(2) + u"\r\nExpected:\t1234 (SUMS, line 3)"},
  });
  OneRow one;
  fail(one, 2);
  one.Details();
  EXPECT_TRUE(one.window.desktop.signatureChecks.empty());
  EXPECT_TRUE(one.window.desktop.originReads.empty());
}

TEST(DetailsTest, Buttons) {
  struct Case {
    RowStatus status;
    bool lookUpOnline;
  };
  for (const Case& test :
       {Case{RowStatus::Waiting, true}, Case{RowStatus::Hashing, true}, Case{RowStatus::Done, true},
        Case{RowStatus::Cancelled, true}, Case{RowStatus::Failed, false}}) {
    SCOPED_TRACE(static_cast<int>(test.status));
    OneRow one;
    one.row.status = test.status;
    one.Details();
    EXPECT_TRUE(one.window.view.detailButtons.copyHashes);
    EXPECT_EQ(one.window.view.detailButtons.lookUpOnline, test.lookUpOnline);
    EXPECT_TRUE(one.window.view.detailButtons.openFolder);
  }
}

// ---- Signature and origin.

TEST(DetailsTest, Signatures) {
  const auto of = [](SignatureState state, std::u16string signer, bool viaCatalog) {
    return [=](OneRow& one) {
      one.row.extras.Make().signature =
          swr::SignatureResult{.state = state, .signer = signer, .viaCatalog = viaCatalog};
    };
  };
  const auto text = [](std::u16string_view words) {
    return Head + u"\r\nSize:\t5 bytes\r\nSignature:\t" + std::u16string(words);
  };
  CheckOneRow({
      {"a file that can't be signed", of(SignatureState::NotApplicable, u"", false),
       text(u"Not applicable (this file type has no digital signature)")},
      {"none", of(SignatureState::NotSigned, u"", false), text(u"Not signed")},
      {"valid", of(SignatureState::Valid, u"Example Corp", false),
       text(u"Signed by Example Corp, valid")},
      {"valid by a catalog", of(SignatureState::Valid, u"Example Corp", true),
       text(u"Signed by Example Corp (through a Windows catalog), valid")},
      {"invalid", of(SignatureState::Invalid, u"Example Corp", true),
       text(u"Signed by Example Corp, but the signature is not valid (the file was changed after "
            u"signing)")},
      {"invalid, signer unknown", of(SignatureState::Invalid, u"", false),
       text(u"Signed, but the signature is not valid (the file was changed after signing)")},
      {"untrusted", of(SignatureState::Untrusted, u"Example Corp", false),
       text(u"Signed by Example Corp, but Windows doesn't trust the certificate")},
      {"untrusted, by a catalog", of(SignatureState::Untrusted, u"Example Corp", true),
       text(u"Signed by Example Corp (through a Windows catalog), but Windows doesn't trust the "
            u"certificate")},
      {"a failed check", of(SignatureState::Unknown, u"", false), text(u"Can't be checked")},
      {"a running check hides an old result",
       [](OneRow& one) { one.row.signatureRequested = true; }, text(u"Checking...")},
  });
}

TEST(DetailsTest, TheSignatureIsCheckedOnceWhenFirstShown) {
  OneRow one;
  one.row.extras.Make().signature.reset();
  const std::u16string start = Head + u"\r\nSize:\t5 bytes\r\nSignature:\t";
  EXPECT_EQ(one.Details(), start + u"Checking...");
  EXPECT_EQ(one.Details(), start + u"Checking...");
  EXPECT_EQ(one.window.desktop.signatureChecks,
            (std::vector<std::pair<uint64_t, std::u16string>>{{one.row.id, one.row.Path()}}));
  one.window.details.OnSignatureResult(one.row.id, {.state = SignatureState::NotSigned});
  EXPECT_EQ(one.window.view.details, start + u"Not signed") << "at once";
  one.Details();
  EXPECT_EQ(one.window.desktop.signatureChecks.size(), 1u);
}

TEST(DetailsTest, ASignatureThatCannotBeCheckedIsNotTriedAgain) {
  OneRow one;
  one.row.extras.Make().signature.reset();
  one.window.desktop.canCheckSignatures = false;
  const std::u16string text = Head + u"\r\nSize:\t5 bytes\r\nSignature:\tCan't be checked";
  EXPECT_EQ(one.Details(), text);
  EXPECT_EQ(one.Details(), text);
  EXPECT_EQ(one.window.desktop.signatureChecks.size(), 1u);
}

TEST(DetailsTest, AResultForAnotherRowOrNoneDoesNotChangeThePane) {
  OneRow one;
  Row& other = one.window.AddRow(u"other");
  one.Details();
  const int refreshes = one.window.view.detailRefreshes;
  one.window.details.OnSignatureResult(other.id, {.state = SignatureState::NotSigned});
  one.window.details.OnSignatureResult(4711, {.state = SignatureState::NotSigned});
  EXPECT_EQ(one.window.view.detailRefreshes, refreshes);
  EXPECT_TRUE(other.extras->signature);
}

TEST(DetailsTest, Origins) {
  const auto of = [](swr::ZoneRecord record) {
    return [record](OneRow& one) { one.row.extras.Make().zone = record; };
  };
  const std::u16string start = Head + u"\r\nSize:\t5 bytes" + Signature;
  const std::u16string host = u"https://example.com/setup.exe";
  const std::u16string page = u"https://example.com/downloads";
  CheckOneRow({
      {"not recorded", of({}), start},
      {"both addresses", of({.found = true, .zoneId = 3, .hostUrl = host, .referrerUrl = page}),
       start + u"\r\nDownloaded from:\t" + host + u"\r\nFrom the page:\t" + page},
      {"only the file's address", of({.found = true, .zoneId = 3, .hostUrl = host}),
       start + u"\r\nDownloaded from:\t" + host},
      {"only the page's address", of({.found = true, .zoneId = 3, .referrerUrl = page}),
       start + u"\r\nDownloaded from:\t" + page},
      {"the internet", of({.found = true, .zoneId = 3}),
       start + u"\r\nDownloaded from:\tthe Internet (no address recorded)"},
      {"another zone", of({.found = true, .zoneId = 4}),
       start + u"\r\nDownloaded from:\tanother computer (no address recorded)"},
      {"an unknown zone", of({.found = true}),
       start + u"\r\nDownloaded from:\tanother computer (no address recorded)"},
  });
}

// A row whose origin has not been read.
struct UnreadOrigin : OneRow {
  UnreadOrigin() { row.extras.Make().zone.reset(); }

  // What the window does when a record is announced.
  void Deliver(uint64_t rowId, const swr::ZoneRecord& record) {
    window.desktop.lateOrigins.push_back({.rowId = rowId, .record = record});
    window.details.OnOriginsRead();
  }
};

const swr::ZoneRecord Downloaded = {.found = true, .zoneId = 3, .hostUrl = u"https://h/"};
const std::u16string WithoutOrigin = Head + u"\r\nSize:\t5 bytes" + Signature;
const std::u16string WithOrigin = WithoutOrigin + u"\r\nDownloaded from:\thttps://h/";

TEST(DetailsTest, TheOriginIsReadOnceWhenFirstShown) {
  for (const swr::ZoneRecord& record : {Downloaded, swr::ZoneRecord{}}) {
    UnreadOrigin one;
    one.window.desktop.origin = record;
    const int refreshes = one.window.view.detailRefreshes;
    const std::u16string& text = record.found ? WithOrigin : WithoutOrigin;
    EXPECT_EQ(one.Details(), text);
    EXPECT_EQ(one.window.view.detailRefreshes, refreshes + 1) << "shown with the other lines";
    EXPECT_EQ(one.Details(), text);
    EXPECT_EQ(one.window.desktop.originReads,
              (std::vector<std::pair<uint64_t, std::u16string>>{{one.row.id, one.row.Path()}}));
  }
}

TEST(DetailsTest, ALateOriginIsShownWhenItArrives) {
  UnreadOrigin one;
  one.window.desktop.origin.reset();
  EXPECT_EQ(one.Details(), WithoutOrigin);
  EXPECT_EQ(one.Details(), WithoutOrigin);
  one.Deliver(one.row.id, Downloaded);
  EXPECT_EQ(one.window.view.details, WithOrigin);
  EXPECT_EQ(one.Details(), WithOrigin);
  EXPECT_EQ(one.window.desktop.originReads.size(), 1u);
}

TEST(DetailsTest, ALateOriginIsShownByAnyRefresh) {
  UnreadOrigin one;
  one.window.desktop.origin.reset();
  one.Details();
  one.window.desktop.lateOrigins = {{.rowId = one.row.id, .record = Downloaded}};
  EXPECT_EQ(one.Details(), WithOrigin) << "its announcement may have failed";
}

TEST(DetailsTest, ALateOriginOfAnotherRowOrNoneDoesNotChangeThePane) {
  UnreadOrigin one;
  one.window.desktop.origin.reset();
  one.Details();
  // The user selects another row before the record arrives.
  const uint64_t late = one.row.id;
  const uint64_t other = one.window.AddRow(u"C:\\other").id;
  one.window.view.selected = {1};
  one.window.details.Refresh();
  const int refreshes = one.window.view.detailRefreshes;
  one.Deliver(late, Downloaded);
  one.Deliver(4711, Downloaded);
  one.Deliver(other, {});
  EXPECT_EQ(one.window.view.detailRefreshes, refreshes);
  EXPECT_EQ(one.window.view.details.find(u"Downloaded"), std::u16string::npos);
  one.window.view.selected = {0};
  EXPECT_EQ(one.Details(), WithOrigin);
  EXPECT_EQ(one.window.desktop.originReads.size(), 2u) << "one for each row";
}

TEST(DetailsTest, ALateOriginOfARemovedRowIsDropped) {
  UnreadOrigin one;
  one.window.desktop.origin.reset();
  one.Details();
  const uint64_t removed = one.row.id;
  one.window.commands.Run(ID_REMOVE);
  ASSERT_TRUE(one.window.rows.IsEmpty());
  one.Deliver(removed, Downloaded);
  EXPECT_EQ(one.window.view.details, u"");
}

TEST(DetailsTest, AllLines) {
  OneRow one;
  one.row.size = 1572864;
  PutDigest(one.row, {AlgoId::Sha256, 0x12});
  one.row.extras.Make().signature =
      swr::SignatureResult{.state = SignatureState::Valid, .signer = u"Example"};
  one.row.extras.Make().zone = swr::ZoneRecord{
      .found = true, .zoneId = 3, .hostUrl = u"https://h/", .referrerUrl = u"https://r/"};
  Expect(one.row, FilledBytes(32, 0x34), {AlgoId::Sha256});
  one.row.extras.Make().checksumLine = 12;
  EXPECT_EQ(one.Details(),
            Head + u"\r\nSize:\t1.5 MB (1,572,864 bytes)\r\nSHA-256:\t" + FilledHex(32, 0x12) +
                u"\r\nSignature:\tSigned by Example, valid\r\nDownloaded from:\thttps://h/"
                u"\r\nFrom the page:\thttps://r/\r\nExpected:\t" +
                FilledHex(32, 0x34) + u" (SHA256SUMS, line 12)");
}

// ---- When the pane is updated.

TEST(DetailsTest, ARealFile) {
  swr::testing::TempTree tree;
  const std::u16string path = tree.AddFile(u"a.bin", "abc");
  FakeWindow window;
  window.algorithms.Select(MaskOf(AlgoId::Crc32));
  window.adding.AddPaths({path});
  window.HashQueuedFiles();
  const auto time = swr::ToLocalTime(swr::testing::ModifiedTime(path));
  ASSERT_TRUE(time);
  char modified[64];
  std::snprintf(modified, sizeof modified, "%04u-%02u-%02u %02u:%02u", time->year, time->month,
                time->day, time->hour, time->minute);
  EXPECT_EQ(window.view.details,
            u"a.bin\r\nFolder:\t" + tree.Root() + u"\r\nSize:\t3 bytes\r\nModified:\t" +
                swr::Utf8ToWide(modified) + u"\r\nCRC32:\t352441c2\r\nSignature:\tChecking...");
}

TEST(DetailsTest, AResultRefreshesThePaneOfItsRowOnly) {
  FakeWindow window;
  Row& a = window.AddRow(u"a");
  Row& b = window.AddRow(u"b");
  a.extras.Make().zone = b.extras.Make().zone = swr::ZoneRecord{};
  window.hashing.QueueRow(a.id, MaskOf(AlgoId::Crc32));
  window.hashing.QueueRow(b.id, MaskOf(AlgoId::Crc32));
  window.view.selected = {1};
  window.details.Refresh();
  const int refreshes = window.view.detailRefreshes;
  window.Finish();
  EXPECT_EQ(window.view.detailRefreshes, refreshes);
  window.Finish();
  EXPECT_EQ(window.view.detailRefreshes, refreshes + 1);
  EXPECT_EQ(window.view.details, u"b\r\nFolder:\t\r\nSize:\t100 bytes\r\nCRC32:\t" +
                                     FakeDigestText(AlgoId::Crc32) +
                                     u"\r\nSignature:\tChecking...");
}

}  // namespace
}  // namespace app::testing
