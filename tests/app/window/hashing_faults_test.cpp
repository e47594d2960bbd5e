// Fault injection: each system call fails in turn while files are hashed, and while a checksum file
// is read and verified. The rows report the error, and the next file is still hashed.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "swr/hash/digest_text.h"
#include "swr/hash/hasher.h"
#include "swr/text/display_text.h"
#include "tests/support/every_fault.h"
#include "tests/support/temp_tree.h"
#include "tests/support/working_window.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::MaskOf;
using swr::SystemCall;
using swr::testing::CountingBytes;
using swr::testing::HasFailed;
using swr::testing::MaybeFailed;
using swr::testing::TempTree;
using Texts = std::vector<std::u16string>;

// Two algorithms of the platform's provider and one of our own.
constexpr swr::AlgoMask HashedAlgos =
    MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Md5) | MaskOf(AlgoId::Sha256);
constexpr uint32_t ProviderAlgos = 2;

std::u16string HexOf(AlgoId id, const std::string& bytes) {
  const swr::Digest digest =
      swr::HashBytes(id, {reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
  const std::string hex = swr::DigestToHex(digest, false);
  return {hex.begin(), hex.end()};
}

std::u16string StatusOf(uint32_t error) {
  return swr::IsMissingError(error) ? u"Missing" : swr::FormatErrorText(error);
}

// The files of all runs. The second is longer than a chunk of the worker, so it is hashed by
// several threads.
struct HashedFiles {
  static const HashedFiles& Get() {
    static const HashedFiles files;
    return files;
  }

  TempTree tree;
  std::vector<std::string> contents = {"0123456789", CountingBytes((1 << 20) + 77), "abc"};
  Texts paths = {tree.AddFile(u"a.bin", contents[0]), tree.AddFile(u"b.bin", contents[1]),
                 tree.AddFile(u"c.bin", contents[2])};
  std::u16string later = tree.AddFile(u"later.bin", contents[0]);
  std::vector<Texts> digests = [this] {
    std::vector<Texts> all;
    for (const std::string& content : contents) {
      Texts& row = all.emplace_back();
      for (const AlgoId id : swr::IdsFromMask(HashedAlgos)) row.push_back(HexOf(id, content));
    }
    return all;
  }();
};

Texts DigestCells(const WorkingWindow& window, size_t row) {
  Texts cells;
  const size_t firstDigest = 3;
  for (size_t i = firstDigest; i + 1 < window.columns.Defs().size(); ++i) {
    cells.push_back(window.cells.TextOf(row, i));
  }
  return cells;
}

// ---- Hashing.

class HashingScenario {
 public:
  HashingScenario() {
    window_.algorithms.Select(HashedAlgos);
    // The details would read the file while the worker hashes it, in no fixed order.
    window_.view.acceptsSelection = false;
  }
  void Run() {
    window_.adding.AddPaths(HashedFiles::Get().paths);
    EXPECT_TRUE(window_.WaitUntilIdle());
  }
  void Check(const MaybeFailed& failed) {
    const HashedFiles& files = HashedFiles::Get();
    const std::array<uint32_t, 3> errors = Errors(failed);
    ASSERT_EQ(window_.rows.Size(), 3u);
    for (size_t i = 0; i < errors.size(); ++i) {
      SCOPED_TRACE(i);
      const Row& row = window_.rows[i];
      EXPECT_EQ(row.Path(), files.paths[i]);
      EXPECT_EQ(row.error, errors[i]);
      EXPECT_FALSE(row.changed);
      EXPECT_EQ(window_.StatusCell(i), errors[i] == 0 ? u"Done" : StatusOf(errors[i]));
      EXPECT_EQ(DigestCells(window_, i), errors[i] == 0 ? files.digests[i] : Texts(3));
    }
    EXPECT_TRUE(window_.desktop.messages.empty());
    EXPECT_FALSE(window_.view.banner);
    EXPECT_FALSE(window_.view.progress);

    // The window works as before.
    window_.adding.AddPaths({files.later});
    EXPECT_TRUE(window_.WaitUntilIdle());
    EXPECT_EQ(window_.StatusCell(3), u"Done");
    EXPECT_EQ(DigestCells(window_, 3), files.digests[0]);
  }

 private:
  // The error of each file.
  static std::array<uint32_t, 3> Errors(const MaybeFailed& failed) {
    std::array<uint32_t, 3> errors = {};
    if (!failed) return errors;
    const uint32_t index = failed->nth - 1;
    switch (failed->call) {
      case SystemCall::OpenFile:
      case SystemCall::FileKind:
        errors.at(index) = failed->code;
        break;
      case SystemCall::CreateDigest:
        errors.at(index / ProviderAlgos) = swr::ErrorNotSupported;
        break;
      case SystemCall::ReadFile: {
        // Each file ends with a read of 0 bytes. Before that, the short ones have one read and the
        // long one two.
        constexpr size_t fileOfRead[] = {0, 0, 1, 1, 1, 2, 2};
        errors.at(fileOfRead[index]) = failed->code;
        break;
      }
      case SystemCall::PathInfo:
        // The system is queried about every path twice: whether it is a folder, and for the row's
        // file info. When the first call fails, the path is treated as a file.
        if (index % 2 == 1) errors.at(index / 2) = failed->code;
        break;
      default:
        // Without file info a change of the file goes unnoticed, and a path that can't be made full
        // is used unchanged. Where the provider makes no reusable hash, another kind is made, and
        // without a thread the files are looked up on the window's.
        EXPECT_TRUE(failed->call == SystemCall::FileInfo || failed->call == SystemCall::FullPath ||
                    failed->call == SystemCall::CreateReusableDigest ||
                    failed->call == SystemCall::StartThread);
        break;
    }
    return errors;
  }

  WorkingWindow window_;
};

TEST(HashingFaultsTest, EachCallFailsWithEachCode) {
  swr::testing::FailEachCall<HashingScenario>();
}

// ---- Reading a checksum file, and what follows.

class VerifyScenario {
 public:
  VerifyScenario() {
    window_.algorithms.Select(MaskOf(AlgoId::Md5));
    window_.adding.AddPaths({HashedFiles::Get().later});
    EXPECT_TRUE(window_.WaitUntilIdle());
    tree_.AddFile(u"good.bin", "0123456789");
    tree_.AddFile(u"bad.bin", "abc");
  }
  void Run() {
    window_.verification.VerifyFile(list_);
    EXPECT_TRUE(window_.WaitUntilIdle());
  }
  void Check(const MaybeFailed& failed) {
    EXPECT_EQ(window_.StatusCell(0), u"Done") << "the earlier row";
    if (const uint32_t error = ListError(failed); error != 0) {
      EXPECT_EQ(window_.desktop.messages,
                (std::vector<TaskDialogSpec>{
                    MessageDialog(TaskDialogIcon::Error, u"The checksum file can't be read.",
                                  list_ + u"\n\n" + swr::FormatErrorText(error) + u".")}));
      EXPECT_EQ(window_.rows.Size(), 1u);
      EXPECT_FALSE(window_.view.banner);
      EXPECT_EQ(window_.Result(), ResultLine{});
      return;
    }
    EXPECT_TRUE(window_.desktop.messages.empty());
    EXPECT_TRUE(window_.view.banner) << "a line is not a checksum";
    const std::array<uint32_t, 3> errors = RowErrors(failed);
    Texts statuses;
    for (size_t i = 1; i < window_.rows.Size(); ++i) statuses.push_back(window_.StatusCell(i));
    EXPECT_EQ(statuses,
              (Texts{errors[0] == 0 ? u"OK (MD5)" : StatusOf(errors[0]),
                     errors[1] == 0 ? u"FAILED" : StatusOf(errors[1]), StatusOf(errors[2])}));
    EXPECT_EQ(window_.Result(), Summary(errors));
  }

 private:
  // The error of the checksum file itself, 0 when it could be read.
  static uint32_t ListError(const MaybeFailed& failed) {
    if (HasFailed(failed, SystemCall::OpenFile, 1) || HasFailed(failed, SystemCall::FileKind, 1) ||
        HasFailed(failed, SystemCall::ReadFile, 1)) {
      return failed->code;
    }
    return HasFailed(failed, SystemCall::FileInfo, 1) ? swr::ErrorFileTooLarge : 0;
  }
  // The errors of the listed files. The third does not exist.
  static std::array<uint32_t, 3> RowErrors(const MaybeFailed& failed) {
    std::array<uint32_t, 3> errors = {0, 0, swr::ErrorFileNotFound};
    if (!failed) return errors;
    const uint32_t index = failed->nth - 1;
    switch (failed->call) {
      case SystemCall::PathInfo:
        errors.at(index) = failed->code;
        break;
      case SystemCall::OpenFile:
      case SystemCall::FileKind:
        errors.at(index - 1) = failed->code;
        break;
      case SystemCall::ReadFile:
        errors.at((index - 1) / 2) = failed->code;
        break;
      case SystemCall::CreateDigest:
        errors.at(index) = swr::ErrorNotSupported;
        break;
      default:
        EXPECT_TRUE(failed->call == SystemCall::FileInfo || failed->call == SystemCall::FullPath ||
                    failed->call == SystemCall::CreateReusableDigest);
        break;
    }
    return errors;
  }
  static ResultLine Summary(const std::array<uint32_t, 3>& errors) {
    std::array<int, 4> counts = {};  // OK, FAILED, missing, unreadable
    for (size_t i = 0; i < errors.size(); ++i) {
      ++counts[errors[i] == 0 ? i : swr::IsMissingError(errors[i]) ? 2 : 3];
    }
    constexpr std::u16string_view words[] = {u" OK", u" FAILED", u" missing", u" unreadable"};
    std::u16string text = u"Not all files match: ";
    for (size_t i = 0; i < counts.size(); ++i) {
      if (i > 0 && counts[i] == 0) continue;
      if (i > 0) text += u", ";
      text += static_cast<char16_t>(u'0' + counts[i]);
      text += words[i];
    }
    return {text + u".", ResultKind::Bad};
  }

  TempTree tree_;
  std::u16string list_ = tree_.AddFile(u"list.md5",
                                       "781e5e245d69b566979b86e28d23f2c7  good.bin\n"
                                       "781e5e245d69b566979b86e28d23f2c7  bad.bin\n"
                                       "781e5e245d69b566979b86e28d23f2c7  absent.bin\n"
                                       "rubbish\n");
  WorkingWindow window_;
};

TEST(VerifyFaultsTest, EachCallFailsWithEachCode) { swr::testing::FailEachCall<VerifyScenario>(); }

}  // namespace
}  // namespace app::testing
