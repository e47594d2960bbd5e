#include "swr/checksums/more_list_forms.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "swr/checksums/checksum_file.h"
#include "swr/hash/digest_text.h"
#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

constexpr std::u16string_view md5 = u"900150983cd24fb0d6963f7d28e17f72";
constexpr std::u16string_view sha256 =
    u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

struct FormCase {
  std::u16string line;
  std::u16string list;  // the list's path
  std::u16string name;  // empty if the line has none of the forms
  std::vector<AlgoId> candidates;
};

std::u16string Text(std::u16string_view before, std::u16string_view hash,
                    std::u16string_view after = {}) {
  std::u16string text(before);
  text += hash;
  text += after;
  return text;
}

const FormCase formCases[] = {
    // As openssl writes it.
    {Text(u"SHA2-256(a.iso)= ", sha256), u"L", u"a.iso", {AlgoId::Sha256}},
    {Text(u"MD5(a (1).iso)= ", md5), u"L", u"a (1).iso", {AlgoId::Md5}},
    {Text(u"MD5(a)= b)= ", md5), u"L", u"a)= b", {AlgoId::Md5}},
    {Text(u"MD5()= ", md5), u"L", u"", {}},
    {Text(u"MD5(a)= ", sha256), u"L", u"", {}},
    {Text(u"NAME(a)= ", md5), u"L", u"", {}},
    {Text(u"MD5 a)= ", md5), u"L", u"", {}},
    // A tab before the name.
    {Text(u"", md5, u"\ta b"), u"x.md5", u"a b", {AlgoId::Md5}},
    {Text(u"", md5, u"\t*a"), u"x.md5", u"a", {AlgoId::Md5}},
    {Text(u"\\", md5, u"\ta\\nb"), u"x.md5", u"a\nb", {AlgoId::Md5}},
    {Text(u"", sha256, u"\ta"), u"L", u"a", {AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3}},
    {Text(u"", md5, u"\t"), u"L", u"", {}},
    {u"12345\ta", u"L", u"", {}},
    {u"123456\ta", u"L", u"", {}},
    // Base64 after a tag.
    {u"MD5 (a) = kAFQmDzST7DWlj99KOF/cg==", u"L", u"a", {AlgoId::Md5}},
    {u"MD5 (a) = kAFQmDzST7DWlj99KOF/cg", u"L", u"a", {AlgoId::Md5}},
    {u"\\MD5 (a\\nb) = kAFQmDzST7DWlj99KOF/cg==", u"L", u"a\nb", {AlgoId::Md5}},
    {u"SHA1 (a) = kAFQmDzST7DWlj99KOF/cg==", u"L", u"", {}},
    {u"MD5 (a) = kAFQmDzST7DW!j99KOF/cg==", u"L", u"", {}},
    {u"kAFQmDzST7DWlj99KOF/cg==  a", u"L", u"", {}},
    // A digest alone.
    {Text(u"", sha256), u"/f/a.iso.sha256", u"a.iso", {AlgoId::Sha256}},
    {Text(u"", sha256, u"  "), u"a.iso.SHA256SUM", u"a.iso", {AlgoId::Sha256}},
    {Text(u"", sha256), u"a.iso.sha256.txt", u"a.iso", {AlgoId::Sha256}},
    {Text(u"", md5),
     u"a.iso.sha256",
     u"a.iso",
     {AlgoId::Md5, AlgoId::Xxh128, AlgoId::Md4, AlgoId::Md2}},
    {Text(u"", sha256), u"SHA256SUMS", u"", {}},
    {Text(u"", sha256), u".sha256", u"", {}},
    {Text(u"", sha256), u"a.iso.txt", u"", {}},
    {u"", u"a.iso.sha256", u"", {}},
};

TEST(MoreListFormsTest, ReadsLinesThatOtherToolsWrite) {
  for (const FormCase& row : formCases) {
    SCOPED_TRACE(WideToUtf8(row.line) + " in " + WideToUtf8(row.list));
    ChecksumLine line;
    line.name = u"untouched";
    const NamedByList named = FileNamedByList(row.list).value_or(
        NamedByList{.algo = AlgoFromChecksumFileName(row.list), .name = {}});
    const bool isForm = ParseExtendedLine(row.line, named, line);
    EXPECT_EQ(isForm, !row.candidates.empty());
    EXPECT_EQ(line.name, isForm ? row.name : u"untouched");
    if (isForm) {
      EXPECT_EQ(line.candidates, row.candidates);
    }
  }
}

TEST(MoreListFormsTest, AreUsedOnlyOnRequest) {
  for (const FormCase& row : formCases) {
    if (row.candidates.empty()) continue;
    SCOPED_TRACE(WideToUtf8(row.line) + " in " + WideToUtf8(row.list));
    ChecksumLine line;
    ChecksumLineReader usual(row.list);
    EXPECT_EQ(usual.Read(row.line, line), LineKind::Skipped);
    ChecksumLineReader extended(row.list, ListForms::Extended);
    EXPECT_EQ(extended.Read(row.line, line), LineKind::Checksum);
    EXPECT_EQ(line.lineNumber, 1u);
    EXPECT_EQ(line.candidates, row.candidates);
  }
}

// Lines in the usual forms give the same result if the other forms are enabled too.
TEST(MoreListFormsTest, DoNotAffectTheUsualForms) {
  const std::u16string lines[] = {
      Text(u"", md5, u"  a\tb"),
      Text(u"MD5 (a(b)= c) = ", md5),
      u"a b 12345678",
      Text(u"", sha256, u" *a.iso"),
      Text(u"\\", md5, u"  a\\\\b"),
      u"; comment",
      Text(u"SHA1 (a) = ", md5),
      u"",
      u"nothing of the kind",
      Text(u"XXH3_", md5, u"  a.iso"),
  };
  for (const std::u16string& text : lines) {
    for (const std::u16string_view list : {u"L", u"a.iso.sha256", u"b.sfv"}) {
      SCOPED_TRACE(WideToUtf8(text));
      ChecksumLine first;
      ChecksumLine second;
      const LineKind usual = ChecksumLineReader(list).Read(text, first);
      if (usual == LineKind::Skipped) continue;
      EXPECT_EQ(ChecksumLineReader(list, ListForms::Extended).Read(text, second), usual);
      EXPECT_EQ(first, second);
    }
  }
}

}  // namespace
}  // namespace swr::testing
