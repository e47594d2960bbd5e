#include "cli/options/parse_options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace cli::testing {
namespace {

using Arguments = std::vector<std::string>;

Options Parsed(const Arguments& arguments) {
  const auto parsed = ParseOptions(arguments);
  if (const auto* error = std::get_if<UsageError>(&parsed)) ADD_FAILURE() << error->text;
  return std::holds_alternative<Options>(parsed) ? std::get<Options>(parsed) : Options();
}

std::string Refused(const Arguments& arguments) {
  const auto parsed = ParseOptions(arguments);
  const auto* error = std::get_if<UsageError>(&parsed);
  return error == nullptr ? "" : error->text;
}

TEST(ParseOptionsTest, KeepsOperandsUnchanged) {
  const std::vector<std::u16string> odd = {u"{}", u"%%", u"[a,b]", u"-", u"a=b", u"", u" "};
  const Options options = Parsed({"{}", "%%", "[a,b]", "-", "a=b", "", " "});
  EXPECT_EQ(options.mode, Mode::Hash);
  EXPECT_EQ(options.operands, odd);
  EXPECT_EQ(Parsed({"--", "-a", "--help"}).operands,
            (std::vector<std::u16string>{u"-a", u"--help"}));
  EXPECT_EQ(Parsed({"a", "-r", "b", "-a", "md5", "c"}).operands,
            (std::vector<std::u16string>{u"a", u"b", u"c"}));
}

TEST(ParseOptionsTest, AlgorithmsOfSeveralOptionsAreCombined) {
  using swr::AlgoId;
  const swr::AlgoMask both = swr::MaskOf(AlgoId::Md5) | swr::MaskOf(AlgoId::Sha256);
  EXPECT_EQ(Parsed({"a"}).algorithms, 0u);
  for (const Arguments& arguments :
       {Arguments{"-a", "md5,sha256", "f"}, Arguments{"-amd5", "-a", "SHA-256", "f"},
        Arguments{"--algorithm=md5,sha2-256", "f"}, Arguments{"-a", "md5,md5,sha256", "f"}}) {
    const Options options = Parsed(arguments);
    EXPECT_EQ(options.algorithms, both);
    EXPECT_EQ(options.operands.size(), 1u);
  }
  EXPECT_EQ(Refused({"-a", "md5,", "f"}), "no such algorithm: ''");
  EXPECT_EQ(Refused({"-a", "sha3", "f"}), "no such algorithm: 'sha3'");
}

TEST(ParseOptionsTest, RejectsOptionsOfOtherModes) {
  EXPECT_EQ(Parsed({"-c", "L"}).mode, Mode::Check);
  EXPECT_EQ(
      Parsed({"-c", "--quiet", "--status", "--ignore-missing", "--strict", "-w", "--extra"}).mode,
      Mode::Check);
  EXPECT_EQ(Parsed({"--update", "L", "-r", "."}).mode, Mode::Update);
  EXPECT_EQ(Parsed({"--expect", "cbf43926", "f"}).mode, Mode::Expect);
  EXPECT_EQ(Parsed({"-c", "--help"}).mode, Mode::Help);
  EXPECT_EQ(Parsed({"-V"}).mode, Mode::Version);
  EXPECT_EQ(Refused({"-c", "--update", "L"}),
            "only one of --check, --expect and --update is possible");
  EXPECT_EQ(Refused({"--strict", "f"}), "--strict is only possible with --check");
  EXPECT_EQ(Refused({"-c", "-o", "x"}), "--output is only possible when checksums are calculated");
  EXPECT_EQ(Refused({"-c", "-r", "x"}), "--recursive is only possible without --check");
  EXPECT_EQ(Refused({"--prune", "x"}), "--prune is only possible with --update");
}

TEST(ParseOptionsTest, FormatsLimitTheAlgorithms) {
  using swr::ExportFormat;
  EXPECT_EQ(Parsed({"--format", "json", "f"}).format, ExportFormat::Json);
  EXPECT_EQ(Parsed({"--tag", "f"}).format, ExportFormat::Tagged);
  EXPECT_EQ(Parsed({"--format", "sfv", "f"}).format, ExportFormat::Sfv);
  EXPECT_EQ(Refused({"--format", "xml", "f"}),
            "--format can't be 'xml' (one of sum, bsd, sfv, csv, json)");
  EXPECT_EQ(Refused({"--format", "sum", "-a", "md5,sha1", "f"}),
            "--format sum allows one algorithm; bsd, csv and json allow several");
  EXPECT_EQ(Refused({"--format", "sfv", "-a", "md5", "f"}), "--format sfv allows CRC32 only");
}

TEST(ParseOptionsTest, ParsesTheExpectedHash) {
  const Options options = Parsed({"--expect", "900150983CD24FB0D6963F7D28E17F72", "f"});
  ASSERT_TRUE(options.expected);
  EXPECT_EQ(options.expected->candidates.size(), 4u);
  const Options narrowed =
      Parsed({"-a", "md4", "--expect", "900150983CD24FB0D6963F7D28E17F72", "f"});
  EXPECT_EQ(narrowed.expected->candidates, std::vector{swr::AlgoId::Md4});
  EXPECT_EQ(Refused({"-a", "sha1", "--expect", "900150983CD24FB0D6963F7D28E17F72", "f"}),
            "the expected hash can't belong to these algorithms");
  EXPECT_EQ(Refused({"--expect", "no hash", "f"}),
            "This doesn't look like a hash. Paste the hex or base64 value from the website.");
}

TEST(ParseOptionsTest, RejectsInvalidCommandLines) {
  EXPECT_EQ(Refused({"--foo", "f"}), "no such option: '--foo'");
  EXPECT_EQ(Refused({"-x"}), "no such option: '-x'");
  EXPECT_EQ(Refused({"-a"}), "--algorithm needs a value");
  EXPECT_EQ(Refused({"--files-from"}), "--files-from needs a value");
  EXPECT_NE(Refused({"--quiet=no", "-c"}), "");
  EXPECT_EQ(Refused({"-o", "", "f"}), "--output needs the name of a file");
  EXPECT_EQ(Refused({"-0", "f"}), "--null is only possible with --files-from");
  for (const char* threads : {"0", "-1", "1025", "x", "1x", "", "99999999999999999999"}) {
    EXPECT_EQ(Refused({"-j", threads, "f"}),
              "--threads needs a number from 1 to 1024, not '" + std::string(threads) + "'");
  }
  EXPECT_EQ(Refused({"--\x1b[2J"}), "no such option: '--?[2J'");
}

}  // namespace
}  // namespace cli::testing
