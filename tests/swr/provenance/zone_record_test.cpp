#include "swr/provenance/zone_record.h"

#include <gtest/gtest.h>

#include <string>

#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

struct ZoneCase {
  const char* description;
  std::u16string text;
  int32_t zoneId = -1;
  std::u16string hostUrl = {};
  std::u16string referrerUrl = {};
};

const ZoneCase zoneCases[] = {
    {"nothing", u""},
    {"only a section", u"[ZoneTransfer]\r\n"},
    {"what a browser writes",
     u"[ZoneTransfer]\r\nZoneId=3\r\nReferrerUrl=https://example.com/\r\n"
     u"HostUrl=https://example.com/setup.exe\r\n",
     3, u"https://example.com/setup.exe", u"https://example.com/"},
    {"no section", u"ZoneId=4", 4},
    {"keys of all sections", u"[a]\nZoneId=1\n[b]\nHostUrl=x", 1, u"x"},
    {"a section after a key", u"HostUrl=x\n[ZoneTransfer]", -1, u"x"},
    {"other letter case", u"ZONEID=3\nhosturl=x\nREFERRERURL=y", 3, u"x", u"y"},
    {"blanks", u"  ZoneId \t=  3 \r\n\tHostUrl = x y \n", 3, u"x y"},
    {"the last of two", u"ZoneId=1\nZoneId=2\nHostUrl=x\nHostUrl=", 2},
    {"an equals sign in the value", u"HostUrl=https://e.com/?a=b=c", -1, u"https://e.com/?a=b=c"},
    {"an unknown key", u"AppZoneId=4\nHostUrls=x\nZone=3"},
    {"a line without a value", u"ZoneId"},
    {"an empty line in between", u"\n\nZoneId=3\n\n", 3},
    {"no line end at the end, truncated", u"ZoneId=3\nHostUrl=https://exa", 3, u"https://exa"},
    // Numbers.
    {"no number", u"ZoneId=three", 0},
    {"an empty number", u"ZoneId=", 0},
    {"a sign", u"ZoneId=-2", -2},
    {"a plus", u"ZoneId=+2", 2},
    {"text after a number", u"ZoneId=3x4", 3},
    {"only a sign", u"ZoneId=-", 0},
    {"too large", u"ZoneId=99999999999999999999", 2147483647},
    {"too small", u"ZoneId=-99999999999999999999", -2147483648},
};

TEST(ZoneTextTest, IsParsed) {
  for (const ZoneCase& test : zoneCases) {
    const ZoneRecord expected = {true, test.zoneId, test.hostUrl, test.referrerUrl};
    EXPECT_EQ(ParseZoneText(test.text), expected) << test.description;
  }
}

TEST(ReadZoneRecordTest, FindsNoRecordWhereThereIsNone) {
  TempTree tree;
  EXPECT_EQ(ReadZoneRecord(tree.AddFile(u"a")), ZoneRecord());
  EXPECT_EQ(ReadZoneRecord(tree.Path(u"missing")), ZoneRecord());
  EXPECT_FALSE(ReadZoneRecord(u"").found);
}

}  // namespace
}  // namespace swr::testing
