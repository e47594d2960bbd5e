// Fault injection: each system call fails in turn while checksums are saved, and while settings are
// read and written.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/paths/path_forms.h"
#include "swr/system/file.h"
#include "swr/text/display_text.h"
#include "tests/support/every_fault.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;
using swr::SystemCall;
using swr::testing::HasFailed;
using swr::testing::MaybeFailed;
using swr::testing::TempTree;

// ---- Saving.

class SaveScenario {
 public:
  SaveScenario() {
    window_.algorithms.Select(MaskOf(AlgoId::Md5));
    AddRow(window_, {.name = tree_.Path(u"a"), .digests = {{AlgoId::Md5, 0x1A}}});
    window_.desktop.saveTarget = SaveTarget{target_, 0};
  }
  void Run() { window_.commands.Run(ID_SAVE_CHECKSUMS); }
  void Check(const MaybeFailed& failed) {
    const std::string saved = "1a1a1a1a1a1a1a1a1a1a1a1a1a1a1a1a  a\n";
    const bool fails =
        HasFailed(failed, SystemCall::CreateNewFile) || HasFailed(failed, SystemCall::WriteFile);
    if (fails) {
      EXPECT_EQ(window_.desktop.messages,
                (std::vector<TaskDialogSpec>{
                    MessageDialog(TaskDialogIcon::Error, u"The checksums couldn't be saved.",
                                  target_ + u"\n\n" + swr::FormatErrorText(failed->code) + u".")}));
      // Creating the file empties the old one; when a later call fails, what was written is kept.
      EXPECT_EQ(Content(), failed->call == SystemCall::CreateNewFile ? "(as before)" : "");
    } else {
      EXPECT_TRUE(window_.desktop.messages.empty());
      EXPECT_EQ(Content(), saved);
    }
    EXPECT_EQ(window_.rows.Size(), 1u);
    EXPECT_EQ(window_.StatusCell(0), u"Done");

    window_.desktop.messages.clear();
    Run();
    EXPECT_TRUE(window_.desktop.messages.empty()) << "the next save is like the first";
    EXPECT_EQ(Content(), saved);
  }

 private:
  std::string Content() const {
    swr::File file;
    if (swr::File::Open(swr::ToLongPath(target_), swr::FileSharing::Everything, file) != 0) {
      return "(no such file)";
    }
    std::string bytes(1000, '\0');
    bytes.resize(file.Read(bytes.data(), static_cast<uint32_t>(bytes.size())).bytes);
    return bytes;
  }

  TempTree tree_;
  std::u16string target_ = tree_.AddFile(u"out.md5", "(as before)");
  FakeWindow window_;
};

TEST(SavingFaultsTest, EachCallFailsWithEachCode) { swr::testing::FailEachCall<SaveScenario>(); }

// ---- Settings.

const std::vector<uint8_t> ColumnBytes = {101, 0, 0, 0, 102, 0, 0, 0, 103, 0, 0, 0, 104, 0, 0, 0};
const std::vector<uint8_t> WindowBytes = {1, 0, 0, 0,    2, 0, 0, 0, 0x84, 3,
                                          0, 0, 0, 0x20, 3, 0, 1, 0, 0,    0};

// Each value that can't be read falls back to its default, independently of the others.
class ReadSettingsScenario {
 public:
  ReadSettingsScenario() {
    desktop_.dwordSettings = {{u"Algorithms", MaskOf(AlgoId::Sha512)},
                              {u"Uppercase", 1},
                              {u"ShowLegacy", 1},
                              {u"IncludeHidden", 1},
                              {u"CrLf", 1}};
    desktop_.binarySettings = {{u"Columns", ColumnBytes}, {u"Window", WindowBytes}};
  }
  void Run() {
    main_.GetSettings().Read();
    main_.Start();
    startsMaximized_ = main_.GetSettings().RestorePlacement();
  }
  void Check(const MaybeFailed& failed) {
    // In the order of reading.
    std::vector<bool> isRead(7, true);
    if (failed) isRead.at(failed->nth - 1) = false;
    EXPECT_EQ(main_.GetOptions().uppercase, isRead[0]);
    EXPECT_EQ(main_.GetOptions().showLegacy, isRead[1]);
    EXPECT_EQ(main_.GetOptions().includeHidden, isRead[2]);
    EXPECT_EQ(main_.GetOptions().crLf, isRead[3]);
    EXPECT_EQ(main_.GetOptions().algorithms,
              isRead[4] ? MaskOf(AlgoId::Sha512) : swr::DefaultAlgoMask);
    EXPECT_EQ(main_.GetColumns().Widths()[0], isRead[5] ? 101u : 200u);
    EXPECT_EQ(main_.GetColumns().Widths()[3], isRead[5] ? 104u : 90u);
    EXPECT_EQ(view_.triedPlacement.has_value(), isRead[6]);
    EXPECT_EQ(startsMaximized_, isRead[6]);
    EXPECT_TRUE(desktop_.messages.empty()) << "no message about settings";
  }

 private:
  FakeView view_;
  FakeDesktop desktop_;
  FakeQueue queue_;
  FakeIntake fileIntake_;
  FakeInstallSystem installSystem_;
  Installation installation_{installSystem_};
  MainWindow main_{ScreenOf(view_, desktop_), DesktopOf(desktop_), queue_, fileIntake_,
                   installation_};
  bool startsMaximized_ = false;
};

TEST(SettingsFaultsTest, EachReadFailsWithEachCode) {
  swr::testing::FailEachCall<ReadSettingsScenario>();
}

// A value that can't be written is unchanged; the others are written.
class WriteSettingsScenario {
 public:
  WriteSettingsScenario() {
    for (const char16_t* name : numbers_) window_.desktop.dwordSettings[name] = 77;
    window_.desktop.binarySettings = {{u"Columns", {7}}, {u"Window", {7}}};
    window_.view.placement = WindowPlacement{.left = 1, .top = 2, .right = 3, .bottom = 4};
  }
  void Run() { window_.settings.Write(); }
  void Check(const MaybeFailed& failed) {
    std::vector<bool> isKept(7, false);
    if (failed) isKept.at(failed->nth - 1) = true;
    for (size_t i = 0; i < std::size(numbers_); ++i) {
      EXPECT_EQ(window_.desktop.dwordSettings[numbers_[i]] == 77, isKept[i]) << i;
    }
    EXPECT_EQ(window_.desktop.binarySettings[u"Columns"].size(), isKept[5] ? 1u : 16u);
    EXPECT_EQ(window_.desktop.binarySettings[u"Window"].size(), isKept[6] ? 1u : 20u);
    EXPECT_TRUE(window_.desktop.messages.empty());
  }

 private:
  // In the order of writing.
  static constexpr const char16_t* numbers_[] = {u"Algorithms", u"Uppercase", u"ShowLegacy",
                                                 u"IncludeHidden", u"CrLf"};
  FakeWindow window_;
};

TEST(SettingsFaultsTest, EachWriteFailsWithEachCode) {
  swr::testing::FailEachCall<WriteSettingsScenario>();
}

}  // namespace
}  // namespace app::testing
