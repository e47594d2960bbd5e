// Fault injection: each system call fails in turn while a folder is added to the list.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "swr/paths/path_forms.h"
#include "swr/system/directory.h"
#include "swr/text/display_text.h"
#include "tests/support/every_fault.h"
#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::SystemCall;
using swr::testing::HasFailed;
using swr::testing::InstalledFaults;
using swr::testing::MaybeFailed;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

struct WalkedTree {
  static const WalkedTree& Get() {
    static const WalkedTree walked;
    return walked;
  }

  // The files in the order of the walk; folders in the order in which they are listed.
  TempTree tree;
  Texts files = {tree.AddFile(u"root/a2", "1"),           tree.AddFile(u"root/a10", "2"),
                 tree.AddFile(u"root/sub/b", "3"),        tree.AddFile(u"root/sub/c", "4"),
                 tree.AddFile(u"root/sub/deep/d", "5"),   tree.AddFile(u"root/sub/deep/e", "6"),
                 tree.AddFile(u"root/sub/deeper/f", "7"), tree.AddFile(u"root/tail/g", "8")};
  Texts folders = {tree.Path(u"root"), tree.Path(u"root/sub"), tree.Path(u"root/sub/deep"),
                   tree.Path(u"root/sub/deeper"), tree.Path(u"root/tail")};
  // The number of calls for a next entry in each listing, found by a walk without failures.
  std::vector<uint32_t> nextEntryCalls = [this] {
    std::vector<uint32_t> counts;
    for (const std::u16string& folder : folders) {
      const InstalledFaults calls;
      std::vector<swr::DirectoryEntry> entries;
      EXPECT_EQ(swr::ReadDirectory(swr::ToLongPath(folder), entries, false), 0u);
      counts.push_back(calls.Count(SystemCall::NextEntry));
    }
    return counts;
  }();

  bool IsBelow(const std::u16string& file, size_t folder) const {
    return file.starts_with(swr::JoinPath(folders[folder], u""));
  }
};

class WalkScenario {
 public:
  void Run() { window_.adding.AddPaths({WalkedTree::Get().folders[0]}); }

  void Check(const MaybeFailed& failed) {
    const WalkedTree& walked = WalkedTree::Get();
    EXPECT_TRUE(window_.desktop.messages.empty()) << "a folder that can't be read shows no message";
    EXPECT_FALSE(window_.view.banner);
    EXPECT_FALSE(window_.desktop.waiting) << "no wait cursor at the end";
    if (HasFailed(failed, SystemCall::PathInfo, 1)) {
      CheckTheFolderAsAFile();
    } else if (HasFailed(failed, SystemCall::ListDirectory)) {
      Texts rest = walked.files;
      std::erase_if(rest, [&](const auto& file) { return walked.IsBelow(file, failed->nth - 1); });
      EXPECT_EQ(Paths(), rest);
    } else if (HasFailed(failed, SystemCall::NextEntry)) {
      CheckAnInterruptedListing(failed->nth);
    } else {
      EXPECT_EQ(Paths(), walked.files);
    }
    CheckRows(failed);
  }

 private:
  Texts Paths() const {
    Texts paths;
    for (const Row& row : window_.rows) paths.push_back(row.Path());
    return paths;
  }

  // A path that can't be recognised as a folder is treated as a file, and fails when it is opened.
  void CheckTheFolderAsAFile() {
    EXPECT_EQ(Paths(), Texts{WalkedTree::Get().folders[0]});
    window_.HashQueuedFiles();
    EXPECT_EQ(window_.StatusCell(0), swr::FormatErrorText(swr::ErrorIsDirectory));
  }

  // An error in the middle of a listing is treated as its end: the entries before it are added with
  // everything below them, and all other folders are added completely.
  void CheckAnInterruptedListing(uint32_t nth) {
    const WalkedTree& walked = WalkedTree::Get();
    size_t cut = 0;
    while (nth > walked.nextEntryCalls[cut]) nth -= walked.nextEntryCalls[cut++];
    std::vector<swr::DirectoryEntry> listed;
    {
      const InstalledFaults faults({{.call = SystemCall::NextEntry, .nth = nth, .code = 5}});
      EXPECT_EQ(swr::ReadDirectory(swr::ToLongPath(walked.folders[cut]), listed, false), 0u);
    }
    Texts expected;
    for (const std::u16string& file : walked.files) {
      const bool isListed = std::ranges::any_of(listed, [&](const swr::DirectoryEntry& entry) {
        const std::u16string path = swr::JoinPath(walked.folders[cut], entry.name);
        return file == path || (entry.isDirectory && file.starts_with(swr::JoinPath(path, u"")));
      });
      if (isListed || !walked.IsBelow(file, cut)) expected.push_back(file);
    }
    EXPECT_EQ(Paths(), expected);
  }

  // A file that can't be examined is a failed row and is not queued; all others are.
  void CheckRows(const MaybeFailed& failed) {
    size_t failedRows = 0;
    for (const Row& row : window_.rows) failedRows += row.status == RowStatus::Failed ? 1 : 0;
    if (HasFailed(failed, SystemCall::PathInfo) && failed->nth > 1) {
      const size_t index = failed->nth - 2;
      ASSERT_LT(index, window_.rows.Size());
      EXPECT_EQ(window_.rows[index].error, failed->code);
      EXPECT_EQ(window_.StatusCell(index), swr::IsMissingError(failed->code)
                                               ? u"Missing"
                                               : swr::FormatErrorText(failed->code));
      EXPECT_EQ(failedRows, 1u);
      EXPECT_EQ(window_.queue.jobs.size(), window_.rows.Size() - 1);
    } else if (!HasFailed(failed, SystemCall::PathInfo)) {
      EXPECT_EQ(failedRows, 0u);
      EXPECT_EQ(window_.queue.jobs.size(), window_.rows.Size());
    }
  }

  FakeWindow window_;
};

TEST(WalkingFaultsTest, EachCallFailsWithEachCode) { swr::testing::FailEachCall<WalkScenario>(); }

}  // namespace
}  // namespace app::testing
