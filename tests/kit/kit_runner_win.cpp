// The program that run-tests.cmd starts: tests Sumwright on this computer and writes a report.
// UsageText below lists the options; docs/platform.md what the kit can't do.
#include "swr/system/windows_api_win.h"

#include <objbase.h>
#include <shellapi.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "app/desktop/addresses.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/kit/computer_info_win.h"
#include "tests/kit/file_bytes_win.h"
#include "tests/kit/saved_state_win.h"
#include "tests/kit/test_session_win.h"
#include "tests/support/dpi_awareness_win.h"
#include "version.h"

namespace kit {
namespace {

constexpr char UsageText[] =
    "run-tests.cmd [OPTION...]\n"
    "\n"
    "Tests Sumwright on this computer and writes report.html and report.txt to its folder.\n"
    "\n"
    "  /soak        also uses the window at random for an hour\n"
    "  /soak:N      the same for N minutes\n"
    "  /quick       only a few tests of each kind\n"
    "  /only:WORD   only the test programs whose title contains WORD\n"
    "  /yes         asks nothing and does not wait for Enter\n"
    "  /restore     only restores what an interrupted run has left changed\n";

constexpr char IntroText[] =
    "Sumwright test kit %s\n"
    "\n"
    "This tests Sumwright on this computer. It takes %s.\n"
    "\n"
    "Windows will open, move and close by themselves. Please don't use the mouse or\n"
    "the keyboard until the tests are done, and close other programs first if you can.\n"
    "\n"
    "Nothing is installed, and nothing leaves this computer. Your Sumwright settings,\n"
    "the clipboard and the entries in Explorer's menus are restored at the end, even if\n"
    "you stop the tests with Ctrl+C or close this window.\n"
    "\n";

constexpr int ExitGood = 0;
constexpr int ExitFailures = 1;
constexpr int ExitNotRun = 2;

constexpr int SessionSeconds = 13 * 60;  // measuring speed takes up to two minutes more
constexpr int LargeFolder = 100'000;
constexpr int QuickFolder = 1000;
constexpr unsigned SpeedMegabytes = 512;
constexpr uint64_t NeededSpace = uint64_t{3} << 30;

struct Options {
  bool quick = false;
  bool yes = false;
  bool restore = false;
  bool help = false;
  int soakMinutes = 0;
  DWORD guarded = 0;
  std::string only;
  std::optional<std::string> unknown;
};

Options ReadOptions(const std::vector<std::wstring>& arguments) {
  Options options;
  for (size_t i = 1; i < arguments.size(); ++i) {
    const std::wstring& argument = arguments[i];
    constexpr std::wstring_view soak = L"/soak:";
    constexpr std::wstring_view only = L"/only:";
    if (argument == L"/quick") {
      options.quick = true;
    } else if (argument == L"/yes") {
      options.yes = true;
    } else if (argument == L"/restore") {
      options.restore = true;
    } else if (argument == L"/soak") {
      options.soakMinutes = 60;
    } else if (argument.starts_with(soak)) {
      options.soakMinutes = std::max(1, _wtoi(argument.c_str() + soak.size()));
    } else if (argument.starts_with(only)) {
      options.only = swr::WideToUtf8(swr::FromWide(argument.substr(only.size())));
    } else if (argument == L"/guard" && i + 1 < arguments.size()) {
      options.guarded = static_cast<DWORD>(std::wcstoul(arguments[++i].c_str(), nullptr, 10));
    } else if (argument == L"/?" || argument == L"/help") {
      options.help = true;
    } else {
      options.unknown = swr::WideToUtf8(swr::FromWide(argument));
    }
  }
  return options;
}

// --- Stopping

HANDLE stopEvent = nullptr;  // set when the run must end
HANDLE doneEvent = nullptr;  // set when everything has been restored

// Runs on a system thread. After Ctrl+C the process continues; after any other event the system
// ends it as soon as this returns.
BOOL WINAPI OnConsoleEvent(DWORD event) {
  SetEvent(stopEvent);
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) WaitForSingleObject(doneEvent, 20'000);
  return TRUE;
}

void WatchForStop() {
  stopEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  doneEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

// --- Before the run

std::wstring KitFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  // From tests\32\kit_runner.exe up to the folder of run-tests.cmd.
  for (int i = 0; i < 3; ++i) path.resize(path.rfind(L'\\'));
  return path;
}

std::wstring EnvironmentText(const wchar_t* name) {
  std::wstring value(32768, L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

// In a folder whose path does not contain the user's name, because it is visible in the pictures.
std::wstring MakeWorkFolder() {
  for (const wchar_t* parent : {L"PUBLIC", L"TEMP"}) {
    const std::wstring folder = EnvironmentText(parent) + L"\\Sumwright test files " +
                                std::to_wstring(GetCurrentProcessId());
    if (CreateDirectoryW(folder.c_str(), nullptr)) return folder;
  }
  return {};
}

bool IsProgramRunning() {
  const HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, L"Local\\Zendrik.Sumwright.Instance");
  if (mutex != nullptr) CloseHandle(mutex);
  return mutex != nullptr;
}

// Why the tests can't be run; empty if they can.
std::string Obstacle(const std::wstring& kit) {
  if (!Exists(kit + L"\\programs\\Sumwright.exe") || !Exists(kit + L"\\tests\\data")) {
    return "Some files of the kit are missing. Please unpack the whole zip file into a folder and "
           "start run-tests.cmd there.";
  }
  if (!WriteBytes(kit + L"\\report.txt", "")) {
    return "The report can't be written here. Please move the kit to a folder of your own, the "
           "desktop for example.";
  }
  if (IsProgramRunning()) return "Sumwright is running. Please close it and start again.";
  ULARGE_INTEGER free = {};
  if (GetDiskFreeSpaceExW(EnvironmentText(L"PUBLIC").c_str(), &free, nullptr, nullptr) &&
      free.QuadPart < NeededSpace) {
    return "The tests need 3 GB of free space on the system drive.";
  }
  return {};
}

void WaitForEnter(const char* text) {
  std::printf("%s", text);
  std::fflush(stdout);
  std::array<char, 100> line;
  static_cast<void>(std::fgets(line.data(), line.size(), stdin));
}

// --- Afterwards

std::string RestoredText(const std::vector<std::string>& failures) {
  if (failures.empty()) return "Your settings, clipboard and menu entries were restored.";
  std::string text;
  for (const std::string& failure : failures) text += (text.empty() ? "" : " ") + failure;
  return text;
}

std::string LocalTime() {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  std::array<char, 40> text = {};
  std::snprintf(text.data(), text.size(), "%04u-%02u-%02u %02u:%02u", now.wYear, now.wMonth,
                now.wDay, now.wHour, now.wMinute);
  return text.data();
}

// Paths in failure messages can contain the user's name.
std::vector<Redaction> PrivateTexts(const SessionFolders& folders) {
  const auto utf8 = [](const std::wstring& text) { return swr::WideToUtf8(swr::FromWide(text)); };
  return {{utf8(folders.kit), "(kit)"},
          {utf8(folders.work), "(work)"},
          {utf8(EnvironmentText(L"USERPROFILE")), "(profile)"}};
}

bool WriteReport(const SessionFolders& folders, Report& report) {
  Redact(report, PrivateTexts(folders));
  const std::string mailbox = swr::WideToUtf8(app::SupportMailbox);
  return WriteBytes(folders.kit + L"\\report.txt", TextReport(report, mailbox)) &&
         WriteBytes(folders.kit + L"\\report.html", HtmlReport(report, mailbox));
}

// --- The run

SessionOptions OptionsOfSession(const Options& options) {
  SessionOptions session = {.soakMinutes = options.soakMinutes, .limitSeconds = SessionSeconds};
  session.plan = MakePlan({.is64Bit = Is64BitWindows(),
                           .quick = options.quick,
                           .soakMinutes = options.soakMinutes,
                           .only = options.only});
  session.fileCount = options.quick ? QuickFolder : LargeFolder;
  if (!options.quick && options.only.empty()) session.speedMegabytes = SpeedMegabytes;
  return session;
}

// Returns the exit code. The user's state has been saved and is restored here, whatever happens.
int TestAndReport(const Options& options, const SessionFolders& folders) {
  Report report = {.version = SUMWRIGHT_VERSION, .started = LocalTime()};
  const ULONGLONG begin = GetTickCount64();
  report.computer = ComputerInfo(folders.work);
  AllowForeground();
  SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED);
  try {
    RunSession(folders, OptionsOfSession(options), stopEvent, report);
  } catch (const std::exception& failure) {
    report.interruption = failure.what() + std::string(".");
  }
  if (WaitForSingleObject(stopEvent, 0) == WAIT_OBJECT_0) report.interruption = "It was stopped.";
  std::printf("\nRestoring your settings...\n");
  std::fflush(stdout);
  const std::vector<std::string> failures = RestoreSavedState();
  report.restored = RestoredText(failures);
  report.seconds = static_cast<int>((GetTickCount64() - begin) / 1000);
  const bool isWritten = WriteReport(folders, report);
  SetEvent(doneEvent);

  std::printf("%s\n%s\n", Verdict(report).c_str(), report.restored.c_str());
  if (!isWritten) {
    std::printf("The report could not be written.\n");
    return ExitNotRun;
  }
  std::printf(
      "\nThe report is report.html in the folder of run-tests.cmd. Please go through the ten\n"
      "points in it that only a person can judge, and send it to %s.\n",
      swr::WideToUtf8(app::SupportMailbox).c_str());
  if (!options.yes) {
    ShellExecuteW(nullptr, L"open", (folders.kit + L"\\report.html").c_str(), nullptr, nullptr,
                  SW_SHOWNORMAL);
  }
  return IsGood(report) && failures.empty() ? ExitGood : ExitFailures;
}

int Refuse(const std::string& why) {
  std::printf("%s\n", why.c_str());
  return ExitNotRun;
}

// Restores what an earlier run has left changed. True when everything is restored.
bool RestoreAfterEarlierRun() {
  if (!HasSavedState()) return true;
  const std::vector<std::string> failures = RestoreSavedState();
  std::printf("An earlier run was interrupted. %s\n\n", RestoredText(failures).c_str());
  return failures.empty();
}

int RunKit(const Options& options) {
  const HANDLE onlyOne = CreateMutexW(nullptr, FALSE, L"Local\\Sumwright test kit");
  if (onlyOne == nullptr || GetLastError() == ERROR_ALREADY_EXISTS) {
    return Refuse("The tests are running already.");
  }
  const bool isAsBefore = RestoreAfterEarlierRun();
  if (options.restore) return isAsBefore ? ExitGood : ExitFailures;

  SessionFolders folders = {.kit = KitFolder()};
  if (const std::string obstacle = Obstacle(folders.kit); !obstacle.empty()) {
    return Refuse(obstacle);
  }
  const std::string duration =
      options.soakMinutes > 0
          ? "15 minutes, and then " + std::to_string(options.soakMinutes) + " for the soak test"
      : options.quick ? "about two minutes"
                      : "15 minutes at most";
  std::printf(IntroText, SUMWRIGHT_VERSION, duration.c_str());
  if (!options.yes) {
    WaitForEnter("Press Enter to begin, or close this window: ");
    std::printf("\n");
  }
  folders.work = MakeWorkFolder();
  if (folders.work.empty()) return Refuse("No folder for the test files can be created.");
  WatchForStop();
  try {
    if (!SaveState(CopyUserState(folders.work))) {
      RemoveFolder(folders.work);
      return Refuse("Your settings can't be kept aside, so nothing was done.");
    }
  } catch (const std::exception& failure) {
    RemoveFolder(folders.work);
    return Refuse("Your settings can't be kept aside, so nothing was done: " +
                  std::string(failure.what()) + ".");
  }
  if (!StartGuard())
    std::printf(
        "(If you end this program by force, your settings are restored only at its next start.)\n");
  return TestAndReport(options, folders);
}

}  // namespace
}  // namespace kit

int wmain(int count, wchar_t** values) {
  const kit::Options options = kit::ReadOptions(std::vector<std::wstring>(values, values + count));
  if (options.help || options.unknown) {
    if (options.unknown) std::printf("Unknown option: %s\n\n", options.unknown->c_str());
    std::printf("%s", kit::UsageText);
    return options.help ? kit::ExitGood : kit::ExitNotRun;
  }
  swr::testing::BecomeDpiAware();
  static_cast<void>(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
  if (options.guarded != 0) {
    kit::Guard(options.guarded);
    return kit::ExitGood;
  }
  const int result = kit::RunKit(options);
  if (!options.yes) kit::WaitForEnter("\nPress Enter to close this window. ");
  return result;
}
