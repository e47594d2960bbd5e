// Makes each system call fail once, in each mode: the program must report the failure, end with a
// matching exit code, and leave no half-written file.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "swr/system/directory.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/text/text_file.h"
#include "tests/cli/captured_program.h"
#include "tests/support/every_fault.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace cli::testing {
namespace {

using swr::SystemCall;
using swr::testing::CountingBytes;
using swr::testing::InstalledFaults;
using swr::testing::TempTree;

constexpr const char* abcHash = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

std::vector<std::u16string> NamesIn(const std::u16string& folder) {
  std::vector<swr::DirectoryEntry> entries;
  EXPECT_EQ(swr::ReadDirectory(folder, entries), 0u);
  std::vector<std::u16string> names;
  for (const swr::DirectoryEntry& entry : entries) names.push_back(entry.name);
  return names;
}

// A folder with eight files, a list of them, and an older list to be replaced.
struct World {
  World() {
    for (int i = 0; i < 8; ++i) {
      tree.AddFile(u"f/" + std::u16string(1, static_cast<char16_t>(u'a' + i)), "abc");
    }
    std::string lines;
    for (char name = 'a'; name < 'i'; ++name) {
      lines += std::string(abcHash) + "  f/" + name + "\n";
    }
    list = tree.AddFile(u"lists/SHA256SUMS", lines);
    tree.AddFile(u"lists/f/unlisted", "def");
    for (char name = 'a'; name < 'i'; ++name) {
      tree.AddFile(u"lists/f/" + std::u16string(1, static_cast<char16_t>(name)), "abc");
    }
    old = tree.AddFile(u"out/old", "old content\n");
  }

  TempTree tree;
  std::u16string list;
  std::u16string old;
};

struct ModeCase {
  const char* what;
  std::vector<std::string> (*arguments)(const World&);
};

const ModeCase modeCases[] = {
    {"hash",
     [](const World& w) -> std::vector<std::string> {
       return {"-r", "-j2", "-o", Bytes(w.old), Bytes(w.tree.Path(u"f"))};
     }},
    {"hash one",
     [](const World& w) -> std::vector<std::string> {
       return {"-a", "md5,crc32", "-o", Bytes(w.old), Bytes(w.tree.Path(u"f/a"))};
     }},
    {"check",
     [](const World& w) -> std::vector<std::string> {
       return {"-c", "--extra", Bytes(w.list)};
     }},
    {"expect",
     [](const World& w) -> std::vector<std::string> {
       return {"--expect", abcHash, "-r", Bytes(w.tree.Path(u"f"))};
     }},
    {"update",
     [](const World& w) -> std::vector<std::string> {
       return {"--update", Bytes(w.list), "-r", Bytes(w.tree.Path(u"lists/f"))};
     }},
    {"names from a file",
     [](const World& w) -> std::vector<std::string> {
       return {"--files-from", Bytes(w.list), "--follow", "-r", Bytes(w.tree.Path(u"f"))};
     }},
};

TEST(ProgramFaultsTest, EachFailedCallIsReportedAndLeavesNoPartialFile) {
  for (const ModeCase& mode : modeCases) {
    for (size_t call = 0; call < swr::SystemCallCount; ++call) {
      const auto which = static_cast<SystemCall>(call);
      // The provider is opened once per process; its failure has its own test.
      if (which == SystemCall::OpenDigestProvider) continue;
      for (uint32_t nth = 1; nth <= 20; ++nth) {
        SCOPED_TRACE(std::string(mode.what) + ", " + swr::testing::NameOf(which) + " " +
                     std::to_string(nth));
        World world;
        uint32_t count = 0;
        ProgramResult result;
        {
          const InstalledFaults faults(
              {{.call = which, .nth = nth, .code = swr::ErrorAccessDenied}});
          result = RunCaptured(mode.arguments(world));
          count = faults.Count(which);
        }
        if (count < nth) break;
        // These failures are not reported: a listing ends early, an entry has no size, a path stays
        // relative, changes to a file go unnoticed, another kind of hash is created.
        const bool isQuiet = which == SystemCall::NextEntry || which == SystemCall::EntryInfo ||
                             which == SystemCall::FullPath || which == SystemCall::FileInfo ||
                             which == SystemCall::PathInfo ||
                             which == SystemCall::CreateReusableDigest;
        if (!isQuiet) {
          EXPECT_NE(result.code, 0);
          EXPECT_FALSE(result.err.empty());
        }
        // Either the old file or the complete new one, and no temporary file.
        EXPECT_EQ(NamesIn(world.tree.Path(u"out")), std::vector<std::u16string>{u"old"});
        const std::u16string content = swr::ReadTextFile(world.old, nullptr).value_or(u"");
        // A folder whose listing ends before its first entry looks empty.
        const bool isEmptyList = which == SystemCall::NextEntry && content.empty();
        EXPECT_TRUE(content.ends_with(u"\n") || isEmptyList);
        EXPECT_EQ(NamesIn(world.tree.Path(u"lists")).size(), 2u);
      }
    }
  }
}

TEST(ProgramFaultsTest, AFailedReadInOneOfEightFilesDoesNotAffectTheOthers) {
  TempTree tree;
  const std::string bytes = CountingBytes(5 << 20);
  for (int i = 0; i < 8; ++i) {
    tree.AddFile(u"f/" + std::u16string(1, static_cast<char16_t>(u'a' + i)), bytes);
  }
  ProgramResult result;
  {
    const InstalledFaults faults(
        {{.call = SystemCall::ReadFile, .nth = 20, .code = swr::ErrorCrc}});
    result = RunCaptured({"-r", "-j8", Bytes(tree.Path(u"f"))});
  }
  EXPECT_EQ(result.code, 2);
  EXPECT_EQ(std::ranges::count(result.out, '\n'), 7);
  EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
}

TEST(ProgramFaultsTest, AFileThatChangesHasNoDigest) {
  TempTree tree;
  const std::u16string file = tree.AddFile(u"a", "abc");
  ProgramResult result;
  {
    const InstalledFaults faults({{.call = SystemCall::ReadFile, .nth = 1, .before = [&] {
                                     swr::testing::AppendBytes(file, "d");
                                   }}});
    result = RunCaptured({Bytes(file)});
  }
  EXPECT_EQ(result.code, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_NE(result.err.find("the file changed while it was read"), result.err.npos) << result.err;
}

TEST(ProgramFaultsTest, AClosedPipeEndsTheRun) {
  TempTree tree;
  for (char16_t first = u'a'; first < u'z'; ++first) {
    for (char16_t second = u'a'; second < u'z'; ++second) {
      for (char16_t third = u'a'; third < u'f'; ++third) {
        tree.AddFile(std::u16string{u'f', u'/', first, second, third});
      }
    }
  }
  CapturingSink out(0, swr::ErrorBrokenPipe);
  CapturingSink err;
  EXPECT_EQ(RunProgram({"-r", Bytes(tree.Path(u"f"))}, out, err, {}), 2);
  EXPECT_TRUE(err.text.starts_with("swrhash: standard output: ")) << err.text;
  EXPECT_EQ(std::ranges::count(err.text, '\n'), 1) << err.text;
}

}  // namespace
}  // namespace cli::testing
