// The real trust services on files without a signature.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>

#include "swr/provenance/signature.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

TEST(CheckSignatureTest, TextHasNoSignature) {
  TempTree tree;
  const SignatureResult result = CheckSignature(tree.AddFile(u"a.txt", "text"));
  EXPECT_EQ(result.state, SignatureState::NotApplicable);
  EXPECT_EQ(result.signer, u"");
  EXPECT_EQ(CheckSignature(tree.AddFile(u"empty.exe")).state, SignatureState::NotApplicable);
}

// The trust services recognise the type of a file by its first four bytes.
TEST(CheckSignatureTest, AFileOfAFewBytesHasNoSignature) {
  TempTree tree;
  for (const char* content : {"", "M", "MZ", "MZ?", "abc", "\xEF\xBB\xBF"}) {
    SCOPED_TRACE(content);
    const SignatureResult result = CheckSignature(tree.AddFile(u"a.exe", content));
    EXPECT_EQ(result.state, SignatureState::NotApplicable);
    EXPECT_EQ(result.signer, u"");
    EXPECT_FALSE(result.viaCatalog);
  }
}

TEST(CheckSignatureTest, AProgramCanHaveASignature) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  EXPECT_EQ(CheckSignature(FromWide(path)).state, SignatureState::NotSigned);
}

TEST(CheckSignatureTest, ReportsWhyAFileCannotBeChecked) {
  TempTree tree;
  EXPECT_EQ(CheckSignature(tree.Path(u"gone.exe")).errorCode, uint32_t{ERROR_FILE_NOT_FOUND});
}

}  // namespace
}  // namespace swr::testing
