#include "tests/kit/plan.h"

namespace kit {
namespace {

// Excludes tests of an installed copy, because the kit installs nothing.
constexpr char NotInstalled[] = "-InstalledCopyTest.*";

// For the 32-bit program on a 64-bit system: enough tests of its window to see that it works. Most
// suites of window_tests are built for 64 bits only.
constexpr char WindowSample[] = "StartTest.*:DropTest.*:VerifyTest.*:ExpectedHashTest.*";
constexpr char SystemSample[] =
    "SignatureTest.*:LockedFileTest.*:StartMinimizedTest.*:"
    "CommandLineToolTest.*";

struct Row {
  const char* title;
  const char* file;
  ProgramKind kind;
  const char* filter;       // for the system's native word size
  const char* otherFilter;  // for 32 bits on a 64-bit system
  const char* quickFilter;
  const char* quickFilter64;  // more of it, for tests that are built for 64 bits only
  int limitSeconds;
};

const Row Rows[] = {
    {"Core", "swr_tests.exe", ProgramKind::Tests, "*", "*", "RenderChecksumsTest.*:HasherTest.*",
     "", 180},
    {"Command-line tool", "cli_tests.exe", ProgramKind::Tests, "*", "*", "ProgramFaultsTest.*", "",
     180},
    {"Window decisions", "app_tests.exe", ProgramKind::Tests, "*", "*", "RegistrySettingsTest.*",
     "", 240},
    {"This Windows", "kit_tests.exe", ProgramKind::WindowTests, "*", SystemSample,
     "StartMinimizedTest.*:LockedFileTest.*:PicturesTest.IdleAndHashing", "", 480},
    {"The window", "window_tests.exe", ProgramKind::WindowTests, NotInstalled, WindowSample,
     "StartTest.ExitEnds*", ":SettingsTest.AreWritten*:ShellEntriesTest.The*", 600},
};

std::string Title(const std::string& name, int bits) {
  return name + " (" + std::to_string(bits) + "-bit)";
}

}  // namespace

std::vector<PlannedProgram> MakePlan(const PlanOptions& options) {
  std::vector<PlannedProgram> plan;
  const int native = options.is64Bit ? 64 : 32;
  const auto add = [&](const Row& row, int bits) {
    std::string filter = bits == native ? row.filter : row.otherFilter;
    if (options.quick)
      filter = std::string(row.quickFilter) + (bits == 64 ? row.quickFilter64 : "");
    plan.push_back({.title = Title(row.title, bits),
                    .bits = bits,
                    .file = row.file,
                    .kind = row.kind,
                    .filter = filter,
                    .limitSeconds = row.limitSeconds});
  };
  for (const Row& row : Rows) add(row, native);
  if (options.is64Bit) {
    for (const Row& row : Rows) add(row, 32);
  }
  // The soak test is built for 64 bits only.
  if (options.soakMinutes > 0 && options.is64Bit) {
    plan.push_back({.title = Title("Soak test", native),
                    .bits = native,
                    .file = "soak_test.exe",
                    .kind = ProgramKind::Soak,
                    .limitSeconds = options.soakMinutes * 60 + 300});
  }
  std::erase_if(plan, [&](const PlannedProgram& program) {
    return program.title.find(options.only) == std::string::npos;
  });
  return plan;
}

}  // namespace kit
