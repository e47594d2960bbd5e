#include "swr/system/file.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

File OpenFile(const std::u16string& path) {
  File file;
  EXPECT_EQ(File::Open(ToLongPath(path), FileSharing::Everything, file), 0u);
  return file;
}

std::string ReadAll(File& file, uint32_t pieceSize) {
  std::string content;
  std::string piece(pieceSize, '\0');
  for (;;) {
    const ReadResult read = file.Read(piece.data(), pieceSize);
    EXPECT_TRUE(read.succeeded) << read.error;
    if (!read.succeeded || read.bytes == 0) return content;
    content.append(piece, 0, read.bytes);
  }
}

// --- Opening ------------------------------------------------------------------------------------

TEST(FileTest, OpensAFile) {
  TempTree tree;
  const std::u16string path = ToLongPath(tree.AddFile(u"file", "content"));
  for (const FileSharing sharing : {FileSharing::Everything, FileSharing::ReadWrite}) {
    File file;
    EXPECT_EQ(File::Open(path, sharing, file), 0u);
    EXPECT_EQ(ReadAll(file, 100), "content");
  }
}

TEST(FileTest, ReportsAMissingFile) {
  TempTree tree;
  File file;
  EXPECT_EQ(File::Open(ToLongPath(tree.Path(u"absent")), FileSharing::Everything, file),
            ErrorFileNotFound);
}

TEST(FileTest, LeavesTheFileAloneWhenOpeningFails) {
  TempTree tree;
  File file = OpenFile(tree.AddFile(u"file", "content"));
  EXPECT_NE(File::Open(ToLongPath(tree.Path(u"absent")), FileSharing::Everything, file), 0u);
  {
    const InstalledFaults faults({{.call = SystemCall::OpenFile, .code = 32}});
    EXPECT_EQ(File::Open(ToLongPath(tree.Path(u"file")), FileSharing::Everything, file), 32u);
  }
  EXPECT_EQ(ReadAll(file, 100), "content");
}

TEST(FileTest, ReplacesTheFileThatWasOpenBefore) {
  TempTree tree;
  File file = OpenFile(tree.AddFile(u"first", "1"));
  EXPECT_EQ(File::Open(ToLongPath(tree.AddFile(u"second", "2")), FileSharing::Everything, file),
            0u);
  EXPECT_EQ(ReadAll(file, 100), "2");
}

TEST(FileTest, KeepsItsPositionWhenMoved) {
  TempTree tree;
  File first = OpenFile(tree.AddFile(u"file", "content"));
  char start[3];
  ASSERT_EQ(first.Read(start, 3).bytes, 3u);
  File second = std::move(first);
  EXPECT_EQ(ReadAll(second, 100), "tent");
}

// --- Reading ------------------------------------------------------------------------------------

TEST(FileTest, ReadsFromItsPosition) {
  TempTree tree;
  const std::string content = CountingBytes(1000);
  const std::u16string path = tree.AddFile(u"file", content);
  for (const uint32_t pieceSize : {1u, 7u, 999u, 1000u, 1001u}) {
    SCOPED_TRACE(pieceSize);
    File file = OpenFile(path);
    EXPECT_EQ(ReadAll(file, pieceSize), content);
  }
}

TEST(FileTest, ReadsNothingAtTheEndRepeatedly) {
  TempTree tree;
  File file = OpenFile(tree.AddFile(u"empty"));
  char byte = 'x';
  for (int round = 0; round < 3; ++round) {
    const ReadResult read = file.Read(&byte, 1);
    EXPECT_TRUE(read.succeeded);
    EXPECT_EQ(read.bytes, 0u);
  }
  EXPECT_EQ(byte, 'x');
}

TEST(FileTest, ContinuesReadingAfterTheFileHasGrown) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "abc");
  File file = OpenFile(path);
  EXPECT_EQ(ReadAll(file, 100), "abc");
  AppendBytes(path, "def");
  EXPECT_EQ(ReadAll(file, 100), "def");
}

TEST(FileTest, ReportsAReadThatFails) {
  TempTree tree;
  File file = OpenFile(tree.AddFile(u"file", "abc"));
  char bytes[3];
  {
    const InstalledFaults faults({{.call = SystemCall::ReadFile, .code = 1117}});
    const ReadResult read = file.Read(bytes, 3);
    EXPECT_FALSE(read.succeeded);
    EXPECT_EQ(read.error, 1117u);
    EXPECT_EQ(read.bytes, 0u);
  }
  EXPECT_EQ(ReadAll(file, 100), "abc");
}

// --- File info ----------------------------------------------------------------------------------

TEST(FileTest, ReportsSizeAndTime) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "12345");
  constexpr FileTime newYear2000 = 125911584000000000;
  SetModifiedTime(path, newYear2000 + 1234567);
  uint32_t error = 77;
  for (const auto& info : {OpenFile(path).Info(), QueryFileInfo(ToLongPath(path), error)}) {
    ASSERT_TRUE(info);
    EXPECT_EQ(info->size, 5u);
    EXPECT_EQ(info->modified, newYear2000 + 1234567);
    EXPECT_FALSE(info->isDirectory);
  }
  EXPECT_EQ(error, 77u) << "unchanged on success";
}

TEST(FileTest, ReportsSizesOverFourGigabytes) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"large");
  ResizeFile(path, 0x123456789);
  uint32_t error = 0;
  EXPECT_EQ(OpenFile(path).Info()->size, 0x123456789u);
  EXPECT_EQ(QueryFileInfo(ToLongPath(path), error)->size, 0x123456789u);
}

TEST(FileTest, ReportsChangesToTheOpenFile) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "12345");
  const File file = OpenFile(path);
  AppendBytes(path, "678");
  EXPECT_EQ(file.Info()->size, 8u);
}

TEST(FileTest, DistinguishesFoldersFromFiles) {
  TempTree tree;
  uint32_t error = 0;
  const auto info = QueryFileInfo(ToLongPath(tree.AddFolder(u"folder")), error);
  ASSERT_TRUE(info);
  EXPECT_TRUE(info->isDirectory);
  EXPECT_EQ(info->size, 0u);
}

TEST(FileTest, ReportsWhyThereIsNoFileInfo) {
  TempTree tree;
  uint32_t error = 0;
  EXPECT_FALSE(QueryFileInfo(ToLongPath(tree.Path(u"absent")), error));
  EXPECT_EQ(error, ErrorFileNotFound);

  const std::u16string path = tree.AddFile(u"file");
  const File file = OpenFile(path);
  const InstalledFaults faults(
      {{.call = SystemCall::PathInfo, .code = 21}, {.call = SystemCall::FileInfo, .code = 21}});
  EXPECT_FALSE(QueryFileInfo(ToLongPath(path), error));
  EXPECT_EQ(error, 21u);
  EXPECT_FALSE(file.Info());
}

TEST(ErrorCodesTest, DistinguishesMissingFromOtherErrors) {
  for (const uint32_t error : {2u, 3u}) EXPECT_TRUE(IsMissingError(error)) << error;
  for (const uint32_t error : {0u, 1u, 4u, 5u, 123u}) EXPECT_FALSE(IsMissingError(error)) << error;
}

// --- OutputFile and WriteWholeFile

std::string BytesOf(const std::u16string& path) {
  File file;
  EXPECT_EQ(File::Open(path, FileSharing::Everything, file), 0u);
  std::string bytes(100, '\0');
  bytes.resize(file.Read(bytes.data(), static_cast<uint32_t>(bytes.size())).bytes);
  return bytes;
}

TEST(WriteWholeFileTest, CreatesAndReplacesFiles) {
  TempTree tree;
  const std::u16string path = tree.Path(u"new");
  EXPECT_EQ(WriteWholeFile(path, "a longer text"), 0u);
  EXPECT_EQ(BytesOf(path), "a longer text");
  EXPECT_EQ(WriteWholeFile(path, std::string_view("a\0b", 3)), 0u);
  EXPECT_EQ(BytesOf(path), std::string("a\0b", 3));
  EXPECT_EQ(WriteWholeFile(path, ""), 0u);
  EXPECT_EQ(BytesOf(path), "");
}

TEST(OutputFileTest, ReplacesTheOldContentPieceByPiece) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"old", "as before");
  {
    OutputFile file;
    ASSERT_EQ(OutputFile::Create(path, file), 0u);
    EXPECT_EQ(file.Write("a"), 0u);
    EXPECT_EQ(file.Write(""), 0u);
    EXPECT_EQ(file.Write("bc"), 0u);
  }
  EXPECT_EQ(BytesOf(path), "abc");
}

TEST(OutputFileTest, KeepsWhatWasWrittenBeforeAFailure) {
  TempTree tree;
  const std::u16string path = tree.Path(u"new");
  {
    const InstalledFaults faults({{.call = SystemCall::WriteFile, .nth = 2, .code = 112}});
    OutputFile file;
    ASSERT_EQ(OutputFile::Create(path, file), 0u);
    EXPECT_EQ(file.Write("a"), 0u);
    EXPECT_EQ(file.Write("b"), 112u);
  }
  EXPECT_EQ(BytesOf(path), "a");
}

TEST(WriteWholeFileTest, ReportsWhyItFails) {
  TempTree tree;
  EXPECT_TRUE(IsMissingError(WriteWholeFile(tree.Path(u"no folder/new"), "a")));
  EXPECT_NE(WriteWholeFile(tree.AddFolder(u"folder"), "a"), 0u);
  EXPECT_NE(WriteWholeFile(u"", "a"), 0u);
}

}  // namespace
}  // namespace swr::testing
