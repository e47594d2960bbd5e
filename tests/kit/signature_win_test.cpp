// The signatures of programs that every version of Windows has, of altered copies, and of a
// self-signed program. No server is contacted.
#include "swr/system/windows_api_win.h"
#include <wincrypt.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/provenance/signature.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/kit/kit_environment.h"
#include "tests/support/temp_tree.h"
#include "tests/support/wine_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::AsWide;
using swr::CheckSignature;
using swr::SignatureResult;
using swr::SignatureState;
using swr::testing::IsWine;
using swr::testing::TempTree;

constexpr uint32_t BadDigest = 0x80096010;
constexpr uint32_t UntrustedRoot = 0x800B0109;

bool HasEmbeddedSignature(const std::u16string& path) {
  return CryptQueryObject(CERT_QUERY_OBJECT_FILE, AsWide(path),
                          CERT_QUERY_CONTENT_FLAG_PKCS7_SIGNED_EMBED, CERT_QUERY_FORMAT_FLAG_BINARY,
                          0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr) != FALSE;
}

// The first program of Windows that is signed in this way; which one it is depends on the version.
std::u16string ProgramOfWindows(bool embedded) {
  wchar_t windows[MAX_PATH] = {};
  GetWindowsDirectoryW(windows, MAX_PATH);
  for (const char16_t* name :
       {u"\\explorer.exe", u"\\System32\\ntdll.dll", u"\\System32\\kernel32.dll",
        u"\\System32\\sppsvc.exe", u"\\System32\\drivers\\ntfs.sys", u"\\System32\\winlogon.exe",
        u"\\notepad.exe", u"\\regedit.exe", u"\\System32\\cmd.exe", u"\\System32\\certutil.exe",
        u"\\System32\\where.exe"}) {
    const std::u16string path = swr::FromWide(windows) + name;
    if (GetFileAttributesW(AsWide(path)) != INVALID_FILE_ATTRIBUTES &&
        HasEmbeddedSignature(path) == embedded) {
      return path;
    }
  }
  return {};
}

std::u16string SignatureLine(const RunningWindow& window, const std::u16string& path) {
  window.Command(ID_CLEAR_LIST);
  window.Drop({path});
  window.WaitUntilIdle();
  std::u16string text;
  WaitFor([&] {
    text = window.Text(IDC_DETAILS);
    return text.find(u"Checking...") == text.npos && text.find(u"SHA-256") != text.npos;
  });
  const size_t start = text.find(u"Signature:\t");
  return start == text.npos ? u"" : text.substr(start, text.find(u"\r\n", start) - start);
}

class SignatureTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (IsWine()) GTEST_SKIP() << "these trust services treat any root as trusted";
  }

  // A copy with one byte in the middle changed.
  std::u16string Altered(const std::u16string& original) {
    const std::u16string copy = tree_.Path(u"altered.exe");
    EXPECT_TRUE(CopyFileW(AsWide(original), AsWide(copy), FALSE)) << GetLastError();
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    GetFileAttributesExW(AsWide(copy), GetFileExInfoStandard, &data);
    SetFileAttributesW(AsWide(copy), FILE_ATTRIBUTE_NORMAL);
    const uint64_t middle = data.nFileSizeLow / 2;
    swr::testing::OverwriteByte(copy, middle, 'X');
    swr::testing::OverwriteByte(copy, middle + 1, 'Y');
    return copy;
  }

  TempTree tree_;
};

TEST_F(SignatureTest, AProgramOfWindowsIsFoundInACatalogue) {
  const std::u16string program = ProgramOfWindows(false);
  ASSERT_NE(program, u"") << "every Windows has some";
  const SignatureResult result = CheckSignature(program);
  EXPECT_EQ(result.state, SignatureState::Valid) << std::hex << result.errorCode;
  EXPECT_TRUE(result.viaCatalog);
  EXPECT_TRUE(result.signer.starts_with(u"Microsoft")) << swr::WideToUtf8(result.signer);
  const RunningWindow window;
  EXPECT_EQ(SignatureLine(window, program),
            u"Signature:\tSigned by " + result.signer + u" (through a Windows catalog), valid");
}

TEST_F(SignatureTest, AProgramOfWindowsHasAnEmbeddedSignature) {
  const std::u16string program = ProgramOfWindows(true);
  ASSERT_NE(program, u"") << "every Windows has some";
  const SignatureResult result = CheckSignature(program);
  EXPECT_EQ(result.state, SignatureState::Valid) << std::hex << result.errorCode;
  EXPECT_FALSE(result.viaCatalog);
  EXPECT_TRUE(result.signer.starts_with(u"Microsoft")) << swr::WideToUtf8(result.signer);
  const RunningWindow window;
  EXPECT_EQ(SignatureLine(window, program), u"Signature:\tSigned by " + result.signer + u", valid");
}

TEST_F(SignatureTest, AnAlteredProgramWithItsOwnSignatureIsNotValid) {
  const std::u16string program = ProgramOfWindows(true);
  ASSERT_NE(program, u"");
  const std::u16string copy = Altered(program);
  const SignatureResult result = CheckSignature(copy);
  EXPECT_EQ(result.state, SignatureState::Invalid);
  EXPECT_EQ(result.errorCode, BadDigest) << std::hex << result.errorCode;
  const RunningWindow window;
  EXPECT_TRUE(SignatureLine(window, copy)
                  .ends_with(u", but the signature is not valid (the file was changed after "
                             u"signing)"))
      << swr::WideToUtf8(SignatureLine(window, copy));
}

TEST_F(SignatureTest, AnAlteredProgramListedInACatalogueIsNotSigned) {
  const std::u16string program = ProgramOfWindows(false);
  ASSERT_NE(program, u"");
  EXPECT_EQ(CheckSignature(Altered(program)).state, SignatureState::NotSigned);
}

TEST_F(SignatureTest, ASelfSignedSignatureIsNotTrusted) {
  const std::u16string program = BesideTheTests(u"..\\data\\self-signed.exe");
  if (GetFileAttributesW(AsWide(program)) == INVALID_FILE_ATTRIBUTES) {
    GTEST_SKIP() << "the self-signed program is only in the kit";
  }
  const SignatureResult result = CheckSignature(program);
  EXPECT_EQ(result.state, SignatureState::Untrusted);
  EXPECT_EQ(result.errorCode, UntrustedRoot) << std::hex << result.errorCode;
  EXPECT_EQ(result.signer, u"A Stranger");
}

}  // namespace
}  // namespace app::testing
