#include "tests/kit/speed_win.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "swr/system/unique_handle.h"
#include "tests/kit/file_bytes_win.h"
#include "tests/kit/program_run_win.h"
#include "tests/kit/tool_digest.h"

namespace kit {
namespace {

constexpr int Runs = 3;
constexpr std::chrono::minutes Limit{2};

struct Algorithm {
  const char* name;
  const wchar_t* ours;    // for hash_file
  const wchar_t* theirs;  // for certutil and Get-FileHash
  size_t digits;
};
constexpr Algorithm Algorithms[] = {
    {"SHA-256", L"sha256", L"SHA256", 64},
    {"SHA-1", L"sha1", L"SHA1", 40},
    {"MD5", L"md5", L"MD5", 32},
};

struct FileTraits {
  using Value = HANDLE;
  static inline const HANDLE Invalid = INVALID_HANDLE_VALUE;
  static void Close(HANDLE file) noexcept { CloseHandle(file); }
};
using File = swr::UniqueHandle<FileTraits>;

// Bytes that no file system can compress.
bool MakeFile(const std::wstring& path, unsigned megabytes) {
  const File file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  if (!file) return false;
  std::string block(size_t{1} << 20, '\0');
  uint32_t state = 20261121;
  for (unsigned i = 0; i < megabytes; ++i) {
    for (char& byte : block) {
      state = state * 1664525 + 1013904223;
      byte = static_cast<char>(state >> 24);
    }
    DWORD written = 0;
    if (!WriteFile(file.Get(), block.data(), static_cast<DWORD>(block.size()), &written, nullptr) ||
        written != block.size()) {
      return false;
    }
  }
  return true;
}

// Under this name a 32-bit process is not redirected to the 32-bit system folder.
std::wstring SystemFolder() {
  std::array<wchar_t, MAX_PATH> windows = {};
  GetWindowsDirectoryW(windows.data(), MAX_PATH);
  const std::wstring native = std::wstring(windows.data()) + L"\\Sysnative";
  return Exists(native) ? native : std::wstring(windows.data()) + L"\\System32";
}

struct Command {
  std::wstring program;
  std::wstring arguments;
};

struct Measured {
  double seconds = 0;
  std::string digest;
  std::string problem;
};

Measured Measure(const Command& command, const std::wstring& folder, size_t digits, HANDLE stop) {
  if (!Exists(command.program)) return {.problem = "the command does not exist"};
  std::string output;
  ProgramRun run = {
      .program = command.program, .arguments = command.arguments, .folder = folder, .limit = Limit};
  run.onLine = [&](std::string_view line) { output.append(line).append("\n"); };
  const RunOutcome outcome = RunProgram(run, stop);
  Measured measured = {.seconds = outcome.seconds, .digest = DigestInOutput(output, digits)};
  if (outcome.end != RunEnd::Exited) {
    measured.problem = ProblemOf(outcome);
  } else if (measured.digest.empty()) {
    measured.problem = "the command printed no digest";
  }
  return measured;
}

double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

SpeedRow Compare(const Command& ours, const Command& theirs, const std::wstring& folder,
                 size_t digits, HANDLE stop) {
  SpeedRow row;
  std::vector<double> ourTimes;
  std::vector<double> theirTimes;
  for (int i = 0; i < Runs; ++i) {
    const Measured mine = Measure(ours, folder, digits, stop);
    const Measured other =
        mine.problem.empty() ? Measure(theirs, folder, digits, stop) : Measured();
    if (!mine.problem.empty()) {
      row.problem = "hash_file: " + mine.problem;
    } else if (!other.problem.empty()) {
      row.problem = other.problem;
    } else if (mine.digest != other.digest) {
      row.problem = "THE DIGESTS DIFFER: ours " + mine.digest + ", theirs " + other.digest;
      row.digestsDiffer = true;
    }
    if (!row.problem.empty()) return row;
    ourTimes.push_back(mine.seconds);
    theirTimes.push_back(other.seconds);
  }
  row.ours = Median(ourTimes);
  row.theirs = Median(theirTimes);
  return row;
}

}  // namespace

std::vector<SpeedRow> MeasureSpeed(const std::wstring& tool, const std::wstring& folder,
                                   unsigned megabytes, HANDLE stop) {
  const std::wstring name = L"speed.bin";
  const std::wstring path = folder + L"\\" + name;
  if (!MakeFile(path, megabytes)) {
    DeleteFileW(path.c_str());
    return {{.work = "all", .other = "all", .problem = "the test file can't be created"}};
  }
  const std::wstring system = SystemFolder();
  std::vector<SpeedRow> rows;
  for (const Algorithm& algorithm : Algorithms) {
    const std::wstring theirs = algorithm.theirs;
    const Command ours = {tool, std::wstring(algorithm.ours) + L" " + name};
    const std::pair<const char*, Command> peers[] = {
        {"certutil -hashfile", {system + L"\\certutil.exe", L"-hashfile " + name + L" " + theirs}},
        {"PowerShell Get-FileHash",
         {system + L"\\WindowsPowerShell\\v1.0\\powershell.exe",
          L"-NoProfile -Command \"(Get-FileHash -Algorithm " + theirs + L" " + name + L").Hash\""}},
    };
    for (const auto& [peer, command] : peers) {
      if (WaitForSingleObject(stop, 0) == WAIT_OBJECT_0) break;
      SpeedRow row = Compare(ours, command, folder, algorithm.digits, stop);
      row.work = std::string(algorithm.name) + " of " + std::to_string(megabytes) + " MiB";
      row.other = peer;
      rows.push_back(std::move(row));
    }
  }
  DeleteFileW(path.c_str());
  return rows;
}

}  // namespace kit
