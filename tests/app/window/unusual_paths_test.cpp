// Paths at and beyond the limits of systems: deep trees, names of 255 units, paths of tens of
// thousands. Files that can be read are hashed; the others become failed rows and do not affect the
// next file.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/paths/path_forms.h"
#include "tests/support/temp_tree.h"
#include "tests/support/working_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

constexpr size_t LongestName = 255;

struct UnusualPathsTest : ::testing::Test {
  UnusualPathsTest() { window.algorithms.Select(swr::MaskOf(AlgoId::Md5)); }
  void Add(const Texts& paths) {
    window.adding.AddPaths(paths);
    EXPECT_TRUE(window.WaitUntilIdle());
  }
  Texts Statuses() const {
    Texts statuses;
    for (size_t i = 0; i < window.rows.Size(); ++i) statuses.push_back(window.StatusCell(i));
    return statuses;
  }

  TempTree tree;
  WorkingWindow window;
};

TEST_F(UnusualPathsTest, ATreeOfFiveHundredLevels) {
  std::u16string relative;
  for (int level = 0; level < 500; ++level) relative += u"d/";
  const std::u16string deepest = tree.AddFile(relative + u"file", "abc");
  const std::u16string upper = tree.AddFile(u"d/d/file", "abc");
  Add({tree.Root()});
  EXPECT_EQ(Statuses(), (Texts{u"Done", u"Done"}));
  EXPECT_EQ(window.rows[0].Path(), upper);
  EXPECT_EQ(window.rows[window.rows.Size() - 1].Path(), deepest);
}

TEST_F(UnusualPathsTest, NamesOf255Units) {
  const std::u16string name(LongestName, u'n');
  const std::u16string inside = tree.AddFile(name + u"/" + name, "abc");
  const std::u16string beside = tree.AddFile(u"list.md5", "");
  Add({tree.Path(name), beside});
  EXPECT_EQ(Statuses(), (Texts{u"Done", u"Done"}));
  EXPECT_EQ(window.rows[0].Path(), inside);
  EXPECT_EQ(window.rows[0].Name(), name);

  // Saved and verified again.
  const std::u16string target = tree.Path(u"out.md5");
  window.desktop.saveTarget = SaveTarget{target, 0};
  window.commands.Run(ID_SAVE_CHECKSUMS);
  EXPECT_TRUE(window.desktop.messages.empty());
  window.edits.Clear();
  window.verification.VerifyFile(target);
  EXPECT_TRUE(window.WaitUntilIdle());
  EXPECT_EQ(Statuses(), (Texts{u"OK (MD5)", u"OK (MD5)"}));
}

TEST_F(UnusualPathsTest, PathsThatAreTooLong) {
  const std::u16string last = tree.AddFile(u"last", "abc");
  for (const size_t units : {5'000u, 32'000u, 32'766u, 32'767u, 32'768u, 40'000u, 200'000u}) {
    for (const size_t step : {size_t{2}, size_t{200}, units}) {
      SCOPED_TRACE(std::to_string(units) + " units in steps of " + std::to_string(step));
      const std::u16string separator = swr::JoinPath(u"x", u"y").substr(1, 1);
      std::u16string path = tree.Root() + separator;
      path.reserve(units);
      while (path.size() < units) {
        const bool isSeparator = path.size() % step == 0 && path.size() + 1 < units;
        path += isSeparator && path.back() != separator[0] ? separator[0] : u'n';
      }
      window.edits.Clear();
      Add({path, last});
      ASSERT_EQ(window.rows.Size(), 2u);
      EXPECT_EQ(window.rows[0].Path(), path);
      EXPECT_EQ(window.rows[0].status, RowStatus::Failed);
      EXPECT_NE(window.rows[0].error, 0u);
      EXPECT_NE(window.StatusCell(0), u"");
      EXPECT_EQ(window.StatusCell(1), u"Done");
      EXPECT_TRUE(window.desktop.messages.empty());
    }
  }
}

TEST_F(UnusualPathsTest, AListThatNamesAPathThatIsTooLong) {
  tree.AddFile(u"good", "abc");
  const std::string line = "900150983cd24fb0d6963f7d28e17f72  ";
  const std::u16string list =
      tree.AddFile(u"list.md5", line + std::string(32'000, 'n') + "\n" + line + "good\n" + line +
                                    "../../" + std::string(70'000, 'x') + "/y\n");
  window.verification.VerifyFile(list);
  EXPECT_TRUE(window.WaitUntilIdle());
  ASSERT_EQ(window.rows.Size(), 3u);
  EXPECT_EQ(window.rows[0].status, RowStatus::Failed);
  EXPECT_EQ(window.StatusCell(1), u"OK (MD5)");
  EXPECT_EQ(window.rows[2].status, RowStatus::Failed);
  EXPECT_EQ(window.Result().kind, ResultKind::Bad);
}

TEST_F(UnusualPathsTest, AListWhoseOwnPathIsTooLong) {
  const std::u16string path = swr::JoinPath(tree.Root(), std::u16string(32'000, u'n'));
  window.verification.VerifyFile(path);
  ASSERT_EQ(window.desktop.messages.size(), 1u);
  EXPECT_EQ(window.desktop.messages[0].mainInstruction, u"The checksum file can't be read.");
  window.desktop.messages.clear();

  Add({tree.AddFile(u"file", "abc")});
  window.desktop.saveTarget = SaveTarget{path, 0};
  window.commands.Run(ID_SAVE_CHECKSUMS);
  ASSERT_EQ(window.desktop.messages.size(), 1u);
  EXPECT_EQ(window.desktop.messages[0].mainInstruction, u"The checksums couldn't be saved.");
}

}  // namespace
}  // namespace app::testing
