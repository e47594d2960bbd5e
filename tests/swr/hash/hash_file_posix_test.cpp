// Files and names that only POSIX systems have.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "swr/hash/file_hasher.h"
#include "swr/system/error_codes.h"
#include "swr/system/path_bytes_posix.h"
#include "tests/support/temp_tree.h"
#include "tests/swr/hash/hash_outcome_checks.h"

namespace swr::testing {
namespace {

struct NameCase {
  std::string_view description;
  std::u16string_view name;
};

// Windows allows lone surrogates in names too, but Wine, on which the Windows build is tested,
// refuses to create such files.
constexpr char16_t loneSurrogates[] = {u'a', 0xD83D, u'b', 0xDE00, 0};
// A byte that is not UTF-8 appears as U+DC00 + byte.
constexpr char16_t invalidBytes[] = {u'x', 0xDCFF, 0xDCE9, u'.', u'm', u'd', u'5', 0};

const NameCase nameCases[] = {
    // Windows interprets these as other names: see hash_file_win_test.cpp.
    {"blank at the end", u"blank "},
    {"full stop at the end", u"stop."},
    {"blanks and full stops at the end", u"both. . "},
    {"only full stops", u"..."},
    {"the name of a device", u"CON"},
    {"the name of a device with an extension", u"nul.txt"},
    // Not possible on Windows.
    {"lone surrogates", loneSurrogates},
    {"bytes that are not UTF-8", invalidBytes},
    {"backslash, colon, star and question mark", u"a\\b:c*d?e"},
    {"line end and tab", u"a\nb\tc"},
};

TEST(HashFilePosixTest, UsesNamesUnchanged) {
  TempTree tree;
  for (const NameCase& row : nameCases) {
    SCOPED_TRACE(row.description);
    const std::u16string path = tree.AddFile(row.name, "content");
    ExpectDigestsOf(HashFile(path, DefaultAlgoMask, {}), DefaultAlgoMask, "content");
  }
}

TEST(HashFilePosixTest, RefusesPipesAndDevices) {
  TempTree tree;
  const std::u16string pipe = tree.Path(u"pipe");
  ASSERT_EQ(mkfifo(PathBytesFromText(pipe).c_str(), 0600), 0);
  for (const std::u16string& path : {pipe, std::u16string(u"/dev/zero")}) {
    const HashOutcome outcome = HashFile(path, DefaultAlgoMask, {});
    EXPECT_EQ(outcome.error, ErrorNotSupported);
    EXPECT_EQ(outcome.bytesRead, 0u);
    ExpectNoDigests(outcome);
  }
}

// Replaces the standard input of this process while it exists.
class PipedInput {
 public:
  PipedInput() : saved_(dup(STDIN_FILENO)) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    dup2(ends[0], STDIN_FILENO);
    close(ends[0]);
    writeEnd_ = ends[1];
  }
  ~PipedInput() {
    dup2(saved_, STDIN_FILENO);
    close(saved_);
  }
  PipedInput(const PipedInput&) = delete;
  PipedInput& operator=(const PipedInput&) = delete;

  // In pieces that divide neither the pipe's capacity nor a chunk.
  void WriteAndClose(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(writeEnd_, bytes.data(), std::min<size_t>(bytes.size(), 1000));
      ASSERT_GT(written, 0);
      bytes.remove_prefix(static_cast<size_t>(written));
    }
    close(writeEnd_);
  }

 private:
  int saved_;
  int writeEnd_;
};

TEST(HashFilePosixTest, HashesAPipe) {
  DigestThreads threads;
  FileHasher hasher(threads);
  for (const size_t size : {size_t{0}, size_t{5}, size_t{100'000}, size_t{3'000'000}}) {
    SCOPED_TRACE(size);
    const std::string content = CountingBytes(size);
    PipedInput input;
    std::thread writer([&] { input.WriteAndClose(content); });
    File file;
    ASSERT_EQ(File::OpenStandardInput(file), 0u);
    std::vector<uint64_t> progress;
    const HashOutcome outcome = hasher.HashStream(
        file, DefaultAlgoMask, {.progress = [&](uint64_t bytes) { progress.push_back(bytes); }});
    writer.join();
    ExpectDigestsOf(outcome, DefaultAlgoMask, content);
    EXPECT_EQ(outcome.bytesRead, size);
    EXPECT_FALSE(outcome.changed);
    EXPECT_EQ(progress.size(), size / DefaultChunkSize + 1) << "short reads do not end a chunk";
  }
}

TEST(HashFilePosixTest, ReportsAMissingStandardInput) {
  const int saved = dup(STDIN_FILENO);
  close(STDIN_FILENO);
  File file;
  EXPECT_EQ(File::OpenStandardInput(file), ErrorInvalidHandle);
  dup2(saved, STDIN_FILENO);
  close(saved);
}

TEST(HashFilePosixTest, FollowsLinks) {
  TempTree tree;
  tree.AddFile(u"target", "content");
  tree.AddFolder(u"folder");
  const auto link = [&](std::u16string_view name, const char* target) {
    const std::u16string path = tree.Path(name);
    EXPECT_EQ(symlink(target, PathBytesFromText(path).c_str()), 0);
    return path;
  };
  ExpectDigestsOf(HashFile(link(u"to file", "target"), DefaultAlgoMask, {}), DefaultAlgoMask,
                  "content");
  EXPECT_EQ(HashFile(link(u"to folder", "folder"), DefaultAlgoMask, {}).error, ErrorIsDirectory);
  EXPECT_EQ(HashFile(link(u"to nothing", "gone"), DefaultAlgoMask, {}).error, ErrorFileNotFound);
  EXPECT_EQ(HashFile(link(u"to itself", "to itself"), DefaultAlgoMask, {}).error, ErrorLinkLoop);
}

}  // namespace
}  // namespace swr::testing
