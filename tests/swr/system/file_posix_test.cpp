// Opening files on POSIX systems: folders can be opened, and pipes and devices have paths.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <string>

#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/system/path_bytes_posix.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

TEST(FilePosixTest, OpensAFolderButCannotReadIt) {
  TempTree tree;
  File folder;
  ASSERT_EQ(File::Open(tree.Root(), FileSharing::Everything, folder), 0u);
  ASSERT_TRUE(folder.Info());
  EXPECT_TRUE(folder.Info()->isDirectory);
  char byte;
  const ReadResult read = folder.Read(&byte, 1);
  EXPECT_FALSE(read.succeeded);
  EXPECT_EQ(read.error, ErrorIsDirectory);
}

TEST(FilePosixTest, DoesNotWaitForAPipe) {
  TempTree tree;
  const std::u16string pipe = tree.Path(u"pipe");
  ASSERT_EQ(mkfifo(PathBytesFromText(pipe).c_str(), 0600), 0);
  File file;
  EXPECT_EQ(File::Open(pipe, FileSharing::Everything, file), ErrorNotSupported);
  EXPECT_EQ(File::Open(u"/dev/null", FileSharing::Everything, file), ErrorNotSupported);
}

TEST(FilePosixTest, TranslatesTheSystemsErrors) {
  TempTree tree;
  tree.AddFile(u"file");
  File file;
  EXPECT_EQ(File::Open(tree.Path(u"file/below"), FileSharing::Everything, file), ErrorPathNotFound);
  EXPECT_EQ(File::Open(tree.Path(std::u16string(256, u'n')), FileSharing::Everything, file),
            ErrorNameTooLong);
  uint32_t error = 0;
  EXPECT_FALSE(QueryFileInfo(tree.Path(u"file/below"), error));
  EXPECT_EQ(error, ErrorPathNotFound);
}

TEST(FilePosixTest, ClosesWhatItOpened) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file");
  const std::u16string pipe = tree.Path(u"pipe");
  ASSERT_EQ(mkfifo(PathBytesFromText(pipe).c_str(), 0600), 0);
  rlimit limit;
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
  const rlimit few = {.rlim_cur = 64, .rlim_max = limit.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
  for (int round = 0; round < 100; ++round) {
    File file;
    EXPECT_EQ(File::Open(path, FileSharing::Everything, file), 0u);
    EXPECT_EQ(File::Open(pipe, FileSharing::Everything, file), ErrorNotSupported);
  }
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
}

}  // namespace
}  // namespace swr::testing
