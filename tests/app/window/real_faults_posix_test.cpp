// Real failures, without fault injection: full disks, missing permissions, other processes, pipes,
// devices and dangling links.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/hash/hash_file.h"
#include "swr/paths/path_forms.h"
#include "swr/system/file.h"
#include "swr/system/path_bytes_posix.h"
#include "swr/text/display_text.h"
#include "tests/support/row_setup.h"
#include "tests/support/temp_tree.h"
#include "tests/support/working_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::FormatErrorText;
using swr::PathBytesFromText;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

struct RealFaultsTest : ::testing::Test {
  TempTree tree;

  void SetMode(std::u16string_view relative, mode_t mode) const {
    ASSERT_EQ(chmod(PathBytesFromText(tree.Path(relative)).c_str(), mode), 0);
  }
  void MakePipe(std::u16string_view relative) const {
    ASSERT_EQ(mkfifo(PathBytesFromText(tree.Path(relative)).c_str(), 0666), 0);
  }
  void MakeLink(const char* target, std::u16string_view relative) const {
    ASSERT_EQ(symlink(target, PathBytesFromText(tree.Path(relative)).c_str()), 0);
  }
};

Texts Statuses(const WorkingWindow& window) {
  Texts statuses;
  for (size_t i = 0; i < window.rows.Size(); ++i) statuses.push_back(window.StatusCell(i));
  return statuses;
}

// The window's status cells for these paths once everything is hashed.
Texts StatusesOf(const Texts& paths) {
  WorkingWindow window;
  window.adding.AddPaths(paths);
  EXPECT_TRUE(window.WaitUntilIdle());
  return Statuses(window);
}

TaskDialogSpec SaveFailure(const std::u16string& path, uint32_t error) {
  return MessageDialog(TaskDialogIcon::Error, u"The checksums couldn't be saved.",
                       path + u"\n\n" + FormatErrorText(error) + u".");
}

// The message after saving the checksums of one file to this path.
std::vector<TaskDialogSpec> SaveTo(const std::u16string& path) {
  FakeWindow window;
  window.algorithms.Select(swr::MaskOf(AlgoId::Md5));
  AddRow(window, {.name = u"a", .digests = {{AlgoId::Md5, 1}}});
  window.desktop.saveTarget = SaveTarget{path, 0};
  window.commands.Run(ID_SAVE_CHECKSUMS);
  return window.desktop.messages;
}

std::string ContentOf(const std::u16string& path) {
  swr::File file;
  if (swr::File::Open(path, swr::FileSharing::Everything, file) != 0) return "(no such file)";
  std::string bytes(1000, '\0');
  bytes.resize(file.Read(bytes.data(), static_cast<uint32_t>(bytes.size())).bytes);
  return bytes;
}

// Runs the test in a separate process, which drops root's permissions first.
void RunAsOrdinaryUser(const std::function<void()>& check) {
  std::fflush(nullptr);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    const bool isOrdinary =
        geteuid() != 0 || (setgid(nobody) == 0 && setuid(nobody) == 0 && geteuid() == nobody);
    if (isOrdinary) check();
    std::fflush(nullptr);
    _exit(!isOrdinary || ::testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

// ---- No space on the disk.

TEST_F(RealFaultsTest, SavingToAFullDisk) {
  EXPECT_EQ(SaveTo(u"/dev/full"), std::vector{SaveFailure(u"/dev/full", swr::ErrorDiskFull)});
}

// The disk becomes full in the middle of the file; what was written is kept.
TEST_F(RealFaultsTest, SavingToADiskThatBecomesFull) {
  const std::u16string path = tree.AddFile(u"out.md5", "(as before)");
  rlimit limit;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit little = {.rlim_cur = 10, .rlim_max = limit.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
  const auto messages = SaveTo(path);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, oldHandler);
  EXPECT_EQ(messages, std::vector{SaveFailure(path, swr::ErrorFileTooLarge)});
  EXPECT_EQ(ContentOf(path), "0101010101");
  EXPECT_TRUE(SaveTo(path).empty());
  EXPECT_EQ(ContentOf(path), "01010101010101010101010101010101  a\n");
}

// ---- No permissions.

TEST_F(RealFaultsTest, FilesAndFoldersWithoutPermission) {
  tree.AddFile(u"a/open", "abc");
  tree.AddFile(u"a/shut", "abc");
  tree.AddFile(u"b/inside", "abc");
  tree.AddFile(u"c/listed", "abc");
  tree.AddFile(u"d/open", "abc");
  tree.AddFile(u"e/kept.md5", "(as before)");
  SetMode(u"", 0755);
  SetMode(u"a/shut", 0);
  SetMode(u"b", 0);
  SetMode(u"c", 0444);  // only names can be read
  SetMode(u"e", 0555);
  SetMode(u"e/kept.md5", 0444);
  const std::u16string denied = FormatErrorText(swr::ErrorAccessDenied);
  RunAsOrdinaryUser([&] {
    // A folder that can't be listed silently adds nothing; the folders after it are added.
    EXPECT_EQ(StatusesOf({tree.Root()}), (Texts{u"Done", denied, denied, u"Done", u"Done"}))
        << "open, shut, listed, open, kept.md5";
    EXPECT_EQ(StatusesOf({tree.Path(u"b")}), Texts{});
    EXPECT_EQ(StatusesOf({tree.Path(u"b/inside"), tree.Path(u"d/open")}), (Texts{denied, u"Done"}));

    WorkingWindow window;
    window.verification.VerifyFile(tree.Path(u"a/shut"));
    EXPECT_EQ(window.desktop.messages,
              std::vector{MessageDialog(TaskDialogIcon::Error, u"The checksum file can't be read.",
                                        tree.Path(u"a/shut") + u"\n\n" + denied + u".")});
    for (const std::u16string_view name : {u"e/new.md5", u"e/kept.md5"}) {
      EXPECT_EQ(SaveTo(tree.Path(name)),
                std::vector{SaveFailure(tree.Path(name), swr::ErrorAccessDenied)});
    }
    EXPECT_EQ(ContentOf(tree.Path(u"e/kept.md5")), "(as before)");
  });
  for (const std::u16string_view folder : {u"b", u"c", u"e"}) SetMode(folder, 0755);
}

// ---- Other processes.

TEST_F(RealFaultsTest, AFileThatAnotherProcessTruncates) {
  const std::u16string path = tree.AddFile(u"file", swr::testing::CountingBytes(10 << 20));
  for (const off_t length : {0, 100, 5 << 20, (10 << 20) - 1}) {
    SCOPED_TRACE(length);
    swr::testing::ResizeFile(path, 10 << 20);
    bool isCut = false;
    const auto cut = [&](uint64_t bytesRead) {
      if (isCut || bytesRead < 3 << 20) return;
      isCut = true;
      const std::string name = PathBytesFromText(path);
      const pid_t child = fork();
      if (child == 0) _exit(truncate(name.c_str(), length) == 0 ? 0 : 1);
      int status = 0;
      EXPECT_EQ(waitpid(child, &status, 0), child);
      EXPECT_EQ(status, 0);
    };
    const swr::HashOutcome outcome =
        swr::HashFile(path, swr::MaskOf(AlgoId::Crc32), {.progress = cut});
    EXPECT_TRUE(isCut);
    EXPECT_TRUE(outcome.changed);
    EXPECT_EQ(outcome.error, 0u);
  }
}

// ---- Paths that are not files.

TEST_F(RealFaultsTest, PipesAndDevicesAmongThePaths) {
  const std::u16string first = tree.AddFile(u"first", "abc");
  MakePipe(u"pipe");
  const std::u16string last = tree.AddFile(u"zlast", "abc");
  const std::u16string no = FormatErrorText(swr::ErrorNotSupported);
  EXPECT_EQ(StatusesOf({first, tree.Path(u"pipe"), u"/dev/zero", u"/dev/null", last}),
            (Texts{u"Done", no, no, no, u"Done"}));
  EXPECT_EQ(StatusesOf({tree.Root()}), (Texts{u"Done", no, u"Done"}));

  WorkingWindow window;
  for (const std::u16string& path : {tree.Path(u"pipe"), std::u16string(u"/dev/zero")}) {
    window.desktop.messages.clear();
    window.verification.VerifyFile(path);
    EXPECT_EQ(window.desktop.messages,
              std::vector{MessageDialog(TaskDialogIcon::Error, u"The checksum file can't be read.",
                                        path + u"\n\n" + no + u".")});
  }
  // A pipe without a reader.
  EXPECT_EQ(SaveTo(tree.Path(u"pipe")),
            std::vector{SaveFailure(tree.Path(u"pipe"), swr::ErrorNotReady)});
}

TEST_F(RealFaultsTest, LinksThatLeadNowhere) {
  const std::u16string file = tree.AddFile(u"folder/file", "abc");
  MakeLink("loop", u"loop");
  MakeLink("pong", u"ping");
  MakeLink("ping", u"pong");
  MakeLink("gone", u"dangling");
  MakeLink("..", u"folder/up");
  MakeLink("file", u"folder/link");
  const std::u16string loops = FormatErrorText(swr::ErrorLinkLoop);
  EXPECT_EQ(StatusesOf({tree.Path(u"loop"), tree.Path(u"ping"), tree.Path(u"dangling"),
                        tree.Path(u"loop/file"), file}),
            (Texts{loops, loops, u"Missing", loops, u"Done"}));
  // "dangling", "loop", "ping", "pong", then "file" and "link" of the folder.
  EXPECT_EQ(StatusesOf({tree.Root()}), (Texts{u"Missing", loops, loops, loops, u"Done", u"Done"}));
}

}  // namespace
}  // namespace app::testing
