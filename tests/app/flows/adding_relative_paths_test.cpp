// Relative paths: how they appear in the list, and which files are recognised as duplicates.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::testing::TempTree;
using TextList = std::vector<std::u16string>;

// Makes this folder the current one during its lifetime.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::u16string& folder) {
    std::filesystem::current_path(std::filesystem::path(folder));
  }
  ~CurrentFolder() { std::filesystem::current_path(before_); }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

struct RelativeCase {
  const char* description;
  std::vector<TextList> calls;  // what each call of AddPaths is given
  TextList paths;               // of the rows afterwards
};

// Rows hold full paths, and a file given by name is recognised by its full path. A file found by a
// walk is looked up by the walk's path, which begins with the folder as it was given, so in a
// relative folder it is not recognised.
TEST(AddRelativePathsTest, RowsHaveFullPathsAndWalkedFilesAreComparedByTheirWalkPaths) {
  TempTree tree;
  const std::u16string c = tree.AddFile(u"sub/c.bin", "c");
  const std::u16string d = tree.AddFile(u"sub/deeper/d.bin", "d");
  const std::u16string e = tree.AddFile(u"e.bin", "e");
  const std::u16string sub = tree.Path(u"sub");
  const std::u16string missing = tree.Path(u"missing.bin");
  std::u16string slashed = sub;
  std::ranges::replace(slashed, u'\\', u'/');
  const bool isOwnForm = slashed == sub;
  const RelativeCase cases[] = {
      {"a file", {{u"e.bin"}}, {e}},
      {"a missing file", {{u"missing.bin"}}, {missing}},
      {"a file that is in the list already", {{e}, {u"e.bin"}}, {e}},
      {"a file, then its full path", {{u"e.bin"}, {e}}, {e}},
      {"a file in both forms at once", {{u"e.bin", e}}, {e}},
      {"a folder", {{u"sub"}}, {c, d}},
      {"a folder twice at once", {{u"sub", u"sub"}}, {c, d}},
      {"a folder whose files are in the list already", {{c, d}, {u"sub"}}, {c, d, c, d}},
      {"a folder that was added by its full path", {{sub}, {u"sub"}}, {c, d, c, d}},
      {"a folder twice", {{u"sub"}, {u"sub"}}, {c, d, c, d}},
      {"a folder, then a file in it", {{u"sub"}, {c}}, {c, d}},
      {"a folder, then its full path", {{u"sub"}, {sub}}, {c, d}},
      {"a folder and a file in it at once", {{u"sub", c}}, {c, d, c}},
      {"a folder in another spelling", {{sub}, {u"./sub"}}, {c, d, c, d}},
      {"the parent folder", {{u"sub/.."}}, {e, c, d}},
      {"a folder with slashes", {{slashed}}, {c, d}},
      {"a folder with slashes that was added by its full path",
       {{sub}, {slashed}},
       isOwnForm ? TextList{c, d} : TextList{c, d, c, d}},
  };
  const CurrentFolder here(tree.Root());
  for (const RelativeCase& test : cases) {
    SCOPED_TRACE(test.description);
    FakeWindow window;
    for (const TextList& call : test.calls) window.adding.AddPaths(call);
    TextList paths;
    for (const Row& row : window.rows) paths.push_back(row.Path());
    EXPECT_EQ(paths, test.paths);
  }
}

// The current folder may have changed when the worker starts the job.
TEST(AddRelativePathsTest, JobsHaveFullPaths) {
  TempTree tree;
  const std::u16string c = tree.AddFile(u"sub/c.bin", "c");
  FakeWindow window;
  {
    const CurrentFolder here(tree.Root());
    window.adding.AddPaths({u"sub"});
  }
  ASSERT_EQ(window.queue.jobs.size(), 1u);
  EXPECT_EQ(window.queue.jobs[0].path->Text(), c);
  window.HashQueuedFiles();
  EXPECT_EQ(window.rows[0].status, RowStatus::Done);
}

}  // namespace
}  // namespace app::testing
