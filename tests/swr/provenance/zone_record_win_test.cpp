// Reads the real stream. Wine stores it as a file of that name, which makes no difference here.
#include <gtest/gtest.h>

#include <string>

#include "swr/provenance/zone_record.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

TEST(ZoneStreamTest, IsReadFromTheStream) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"setup.exe", "content");
  WriteBytes(path + u":Zone.Identifier",
             "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=https://e.com/\r\n");
  EXPECT_EQ(ReadZoneRecord(path), (ZoneRecord{true, 3, u"https://e.com/", u""}));
}

TEST(ZoneStreamTest, AnEmptyOneIsFound) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"setup.exe");
  WriteBytes(path + u":Zone.Identifier", "");
  EXPECT_EQ(ReadZoneRecord(path), (ZoneRecord{true, -1, u"", u""}));
}

TEST(ZoneStreamTest, IsReadInAnyEncoding) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"setup.exe");
  WriteBytes(path + u":Zone.Identifier", std::string("\xFF\xFEZ\0o\0n\0e\0I\0d\0=\0"
                                                     "3\0",
                                                     18));
  EXPECT_EQ(ReadZoneRecord(path).zoneId, 3);
}

TEST(ZoneStreamTest, IsReadUpTo64KiB) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"setup.exe");
  const std::string comment(65536 - 9, ';');
  WriteBytes(path + u":Zone.Identifier", comment + "\nZoneId=34\nHostUrl=x");
  // Including the first part of the line at the limit.
  EXPECT_EQ(ReadZoneRecord(path), (ZoneRecord{true, 3, u"", u""}));
}

}  // namespace
}  // namespace swr::testing
