#include "tests/kit/program_run_win.h"

#include <array>
#include <cstdio>
#include <map>
#include <thread>

#include "swr/system/unique_handle.h"

namespace kit {
namespace {

using std::chrono::steady_clock;

struct HandleTraits {
  using Value = HANDLE;
  static constexpr HANDLE Invalid = nullptr;
  static void Close(HANDLE handle) noexcept { CloseHandle(handle); }
};
using Handle = swr::UniqueHandle<HandleTraits>;

// Changes the environment of this process, which children inherit, for its own lifetime.
class AddedEnvironment {
 public:
  explicit AddedEnvironment(const std::vector<std::pair<std::wstring, std::wstring>>& variables) {
    for (const auto& [name, value] : variables) {
      std::wstring before(32768, L'\0');
      const DWORD length =
          GetEnvironmentVariableW(name.c_str(), before.data(), static_cast<DWORD>(before.size()));
      before.resize(length);
      before_[name] = before;
      SetEnvironmentVariableW(name.c_str(), value.c_str());
    }
  }
  ~AddedEnvironment() {
    for (const auto& [name, value] : before_) {
      SetEnvironmentVariableW(name.c_str(), value.empty() ? nullptr : value.c_str());
    }
  }
  AddedEnvironment(const AddedEnvironment&) = delete;
  AddedEnvironment& operator=(const AddedEnvironment&) = delete;

 private:
  std::map<std::wstring, std::wstring> before_;
};

// Ends all its processes when it is closed, which also happens when this process ends.
Handle MakeJob() {
  Handle job(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

struct Pipe {
  Handle read;
  Handle write;  // inherited by the program
};

Pipe MakePipe() {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  if (!CreatePipe(&read, &write, &inherited, 0)) return {};
  SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
  return {Handle(read), Handle(write)};
}

void ReadLines(HANDLE pipe, const std::function<void(std::string_view)>& onLine) {
  std::string rest;
  std::array<char, 4096> buffer;
  DWORD read = 0;
  while (ReadFile(pipe, buffer.data(), buffer.size(), &read, nullptr) && read > 0) {
    rest.append(buffer.data(), read);
    size_t start = 0;
    for (size_t end; (end = rest.find('\n', start)) != rest.npos; start = end + 1) {
      onLine(std::string_view(rest).substr(start, end - start));
    }
    rest.erase(0, start);
  }
  if (!rest.empty()) onLine(rest);
}

struct Started {
  Handle process;
  Handle thread;
  DWORD error = 0;
};

Started Start(const ProgramRun& run, HANDLE output, DWORD flags) {
  std::wstring command = L"\"" + run.program + L"\" " + run.arguments;
  STARTUPINFOW startup = {.cb = sizeof startup};
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output;
  startup.hStdError = output;
  PROCESS_INFORMATION process = {};
  const AddedEnvironment environment(run.environment);
  if (!CreateProcessW(run.program.c_str(), command.data(), nullptr, nullptr, TRUE, flags, nullptr,
                      run.folder.c_str(), &startup, &process)) {
    return {.error = GetLastError()};
  }
  return {Handle(process.hProcess), Handle(process.hThread)};
}

// Without a console window; outside the job of this process if possible, because before Windows 8 a
// process can be in one job only.
Started StartSuspended(const ProgramRun& run, HANDLE output) {
  constexpr DWORD flags = CREATE_SUSPENDED | CREATE_NO_WINDOW;
  BOOL isInJob = FALSE;
  IsProcessInJob(GetCurrentProcess(), nullptr, &isInJob);
  if (isInJob) {
    Started started = Start(run, output, flags | CREATE_BREAKAWAY_FROM_JOB);
    if (started.process) return started;
  }
  return Start(run, output, flags);
}

}  // namespace

RunOutcome RunProgram(const ProgramRun& run, HANDLE stop) {
  const auto begin = steady_clock::now();
  RunOutcome outcome;
  Pipe pipe = MakePipe();
  Handle job = MakeJob();
  Started started = StartSuspended(run, pipe.write.Get());
  pipe.write.Reset();
  if (!started.process) {
    outcome.code = started.error;
    return outcome;
  }
  AssignProcessToJobObject(job.Get(), started.process.Get());
  ResumeThread(started.thread.Get());
  std::thread reader([&] { ReadLines(pipe.read.Get(), run.onLine); });

  const HANDLE awaited[] = {started.process.Get(), stop};
  const DWORD waited =
      WaitForMultipleObjects(2, awaited, FALSE, static_cast<DWORD>(run.limit.count()));
  outcome.end = waited == WAIT_OBJECT_0       ? RunEnd::Exited
                : waited == WAIT_OBJECT_0 + 1 ? RunEnd::Stopped
                                              : RunEnd::TimedOut;
  if (outcome.end != RunEnd::Exited) TerminateProcess(started.process.Get(), 99);
  job.Reset();
  WaitForSingleObject(started.process.Get(), 10'000);
  GetExitCodeProcess(started.process.Get(), &outcome.code);
  reader.join();
  outcome.seconds = std::chrono::duration<double>(steady_clock::now() - begin).count();
  return outcome;
}

std::string ProblemOf(const RunOutcome& outcome) {
  std::array<char, 100> text = {};
  switch (outcome.end) {
    case RunEnd::NotStarted:
      std::snprintf(text.data(), text.size(), "It could not be started (error %lu).", outcome.code);
      break;
    case RunEnd::TimedOut:
      std::snprintf(text.data(), text.size(), "It took too long and was ended after %.0f seconds.",
                    outcome.seconds);
      break;
    case RunEnd::Stopped:
      return "It was stopped.";
    case RunEnd::Exited:
      if (outcome.code <= 1) return {};
      std::snprintf(text.data(), text.size(), "It crashed or was aborted (exit code 0x%lX).",
                    outcome.code);
      break;
  }
  return text.data();
}

}  // namespace kit
