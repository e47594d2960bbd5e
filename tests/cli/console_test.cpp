// Differences in the output when it goes to a terminal.
#include <gtest/gtest.h>

#include "tests/cli/captured_program.h"
#include "tests/support/temp_tree.h"

namespace cli::testing {
namespace {

using swr::testing::TempTree;

constexpr ConsoleTraits terminal = {.outIsTerminal = true,
                                    .errIsTerminal = true,
                                    .outHasColors = true,
                                    .errHasColors = true,
                                    .errWidth = 40};

TEST(ConsoleTest, EscapesNamesForATerminal) {
  TempTree tree;
  const std::u16string file = tree.AddFile(u"a\u202Egnp.exe", "abc");
  const ProgramResult shown = RunCaptured({Bytes(file)}, terminal);
  EXPECT_NE(shown.out.find("a[U+202E]gnp.exe"), shown.out.npos) << shown.out;
  const ProgramResult piped = RunCaptured({Bytes(file)});
  EXPECT_NE(piped.out.find("a\xE2\x80\xAEgnp.exe"), piped.out.npos) << piped.out;
  const ProgramResult missing = RunCaptured({Bytes(file) + "x"});
  EXPECT_NE(missing.err.find("a[U+202E]gnp.exex"), missing.err.npos) << missing.err;
}

TEST(ConsoleTest, UsesColoursOnTerminalsOrOnRequest) {
  TempTree tree;
  tree.AddFile(u"a", "abc");
  const std::u16string list = tree.AddFile(u"L.md5", "900150983cd24fb0d6963f7d28e17f72  a\n");
  const std::string list8 = Bytes(list);
  EXPECT_EQ(RunCaptured({"-c", list8}).out, "a: OK\n");
  EXPECT_EQ(RunCaptured({"-c", list8}, terminal).out, "a: \x1b[32mOK\x1b[0m\n");
  EXPECT_EQ(RunCaptured({"-c", "--color", "never", list8}, terminal).out, "a: OK\n");
  EXPECT_EQ(RunCaptured({"-c", "--color=always", list8}).out, "a: \x1b[32mOK\x1b[0m\n");
}

}  // namespace
}  // namespace cli::testing
