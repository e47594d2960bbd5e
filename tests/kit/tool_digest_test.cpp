#include "tests/kit/tool_digest.h"

#include <gtest/gtest.h>

#include <string_view>

namespace kit {
namespace {

struct OutputCase {
  const char* description;
  std::string_view output;
  std::string_view digest;
};

const OutputCase outputCases[] = {
    {"hash_file", "900150983cd24fb0d6963f7d28e17f72  speed.bin\r\n",
     "900150983cd24fb0d6963f7d28e17f72"},
    {"certutil of Windows 10",
     "MD5 hash of speed.bin:\r\n900150983cd24fb0d6963f7d28e17f72\r\n"
     "CertUtil: -hashfile command completed successfully.\r\n",
     "900150983cd24fb0d6963f7d28e17f72"},
    {"certutil of Windows 7",
     "MD5 hash of file speed.bin:\r\n90 01 50 98 3c d2 4f b0 d6 96 3f 7d 28 e1 7f 72\r\n"
     "CertUtil: -hashfile command completed successfully.\r\n",
     "900150983cd24fb0d6963f7d28e17f72"},
    {"PowerShell", "900150983CD24FB0D6963F7D28E17F72\r\n", "900150983cd24fb0d6963f7d28e17f72"},
    {"of another length", "a9993e364706816aba3e25717850c26c9cd0d89d\r\n", ""},
    {"an error", "CertUtil: -hashfile command FAILED: 0x80070002\r\n", ""},
    {"nothing", "", ""},
};

TEST(ToolDigestTest, IsFoundInTheOutputOfEachTool) {
  for (const OutputCase& test : outputCases) {
    EXPECT_EQ(DigestInOutput(test.output, 32), test.digest) << test.description;
  }
}

}  // namespace
}  // namespace kit
