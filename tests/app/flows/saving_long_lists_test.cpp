// Checksum files that are written in several pieces.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/checksums/checksum_writer.h"
#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/text/decimal_text.h"
#include "swr/text/display_text.h"
#include "tests/support/fake_window.h"
#include "tests/support/fault_plan.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::SystemCall;
using swr::testing::InstalledFaults;
using swr::testing::TempTree;

std::string ReadWhole(const std::u16string& path) {
  swr::File file;
  EXPECT_EQ(swr::File::Open(swr::ToLongPath(path), swr::FileSharing::Everything, file), 0u);
  std::string bytes;
  std::string piece(1 << 20, '\0');
  while (true) {
    const swr::ReadResult read = file.Read(piece.data(), static_cast<uint32_t>(piece.size()));
    EXPECT_TRUE(read.succeeded);
    if (!read.succeeded || read.bytes == 0) return bytes;
    bytes.append(piece, 0, read.bytes);
  }
}

class SavingLongListsTest : public ::testing::Test {
 protected:
  static constexpr size_t Rows = 12'000;

  SavingLongListsTest() {
    window_.options.algorithms = swr::MaskOf(AlgoId::Crc32) | swr::MaskOf(AlgoId::Sha256);
    for (size_t i = 0; i < Rows; ++i) {
      const std::u16string name = u"photograph " + swr::DecimalText(i) + u".jpg";
      const swr::AlgoId algos[] = {AlgoId::Crc32, AlgoId::Sha256};
      Row& row = window_.AddRow(tree_.Path(name), i);
      row.status = RowStatus::Done;
      exported_.push_back({.name = name, .size = i});
      for (const AlgoId algo : algos) {
        PutDigest(row, {algo, static_cast<uint8_t>(i)});
        exported_.back().digests.push_back({algo, row.digests[swr::IndexOf(algo)]});
      }
    }
    window_.Recount();
  }
  void Save(size_t filter) {
    window_.desktop.saveTarget = SaveTarget{target_, filter};
    window_.commands.Run(ID_SAVE_CHECKSUMS);
  }

  TempTree tree_;
  std::u16string target_ = tree_.AddFile(u"out", "(as before)");
  FakeWindow window_;
  std::vector<swr::ExportRow> exported_;
};

TEST_F(SavingLongListsTest, ThePiecesFormTheWholeFile) {
  const swr::ExportOptions formats[] = {
      {.format = swr::ExportFormat::Sha256Sum, .algo = AlgoId::Crc32, .hasAlgo = true},
      {.format = swr::ExportFormat::Sha256Sum, .algo = AlgoId::Sha256, .hasAlgo = true},
      {.format = swr::ExportFormat::Tagged},
      {.format = swr::ExportFormat::Sfv},
      {.format = swr::ExportFormat::Csv},
      {.format = swr::ExportFormat::Json}};
  for (size_t filter = 0; filter < std::size(formats); ++filter) {
    SCOPED_TRACE(filter);
    const InstalledFaults writes;
    Save(filter);
    EXPECT_EQ(ReadWhole(target_), swr::RenderChecksums(exported_, formats[filter]));
    EXPECT_GT(writes.Count(SystemCall::WriteFile), 1u);
  }
  EXPECT_TRUE(window_.desktop.messages.empty());
}

// As when the disk is full: what was written is kept, nothing more is written, and the failure is
// reported.
TEST_F(SavingLongListsTest, AFailureInTheMiddleEndsTheSave) {
  const std::string whole = swr::RenderChecksums(exported_, {.format = swr::ExportFormat::Tagged});
  {
    const InstalledFaults faults(
        {{.call = SystemCall::WriteFile, .nth = 2, .code = swr::ErrorDiskFull}});
    Save(2);
    EXPECT_EQ(faults.Count(SystemCall::WriteFile), 2u);
  }
  EXPECT_EQ(window_.desktop.messages,
            (std::vector<TaskDialogSpec>{MessageDialog(
                TaskDialogIcon::Error, u"The checksums couldn't be saved.",
                target_ + u"\n\n" + swr::FormatErrorText(swr::ErrorDiskFull) + u".")}));
  const std::string written = ReadWhole(target_);
  EXPECT_FALSE(written.empty());
  EXPECT_LT(written.size(), whole.size());
  EXPECT_TRUE(whole.starts_with(written));
  EXPECT_EQ(window_.rows.Size(), Rows);

  window_.desktop.messages.clear();
  Save(2);
  EXPECT_TRUE(window_.desktop.messages.empty()) << "the next save succeeds";
  EXPECT_EQ(ReadWhole(target_), whole);
}

}  // namespace
}  // namespace app::testing
