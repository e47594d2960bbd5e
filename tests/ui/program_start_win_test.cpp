// Starts that show no window.
#include "tests/support/program_start_win.h"

#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "swr/system/wide_text_win.h"
#include "tests/ui/desktop_state_win.h"

namespace app::testing {
namespace {

TEST(ProgramStartTest, AStartWithoutAWindowIsTriedThreeTimes) {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::string option = BrowserOption;
  // This program ends at once when it is started as a browser.
  const swr::testing::ProgramStart start = {
      .program = swr::FromWide({path, length}),
      .arguments = {std::u16string(option.begin(), option.end()), u"https://start.example/"}};
  ::testing::internal::CaptureStderr();
  std::string failure;
  try {
    swr::testing::StartProgramWithWindow(start);
  } catch (const std::runtime_error& error) {
    failure = error.what();
  }
  const std::string said = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(failure, "the program shows no window: it ended with exit code 0");
  size_t starts = 0;
  for (size_t at = said.find("did not start"); at != std::string::npos;
       at = said.find("did not start", at + 1)) {
    ++starts;
  }
  EXPECT_EQ(starts, 3u) << said;
  EXPECT_EQ(OpenedAddress(), u"https://start.example/");
}

TEST(ProgramStartTest, AMissingProgramIsReported) {
  EXPECT_THROW(swr::testing::StartProgramWithWindow({.program = u"C:\\nowhere\\Sumwright.exe"}),
               std::runtime_error);
}

}  // namespace
}  // namespace app::testing
