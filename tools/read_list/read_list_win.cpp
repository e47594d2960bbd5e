// read_list.exe: prints the list of the open Sumwright window in UTF-8, one line per row: status,
// the digests in the order of the columns, and path, separated by tabs.
//
//   --wait              waits until the window has no work left
//   --screenshot-ready  repaints the window first
//   --close             closes the window instead of printing, and waits until the program ends
//   --start PROGRAM.exe [PATH...]
//                       as the last option: first starts the program with these paths, and again if
//                       no window appears; the window stays open afterwards
//
// Exits with 0, or with 1 and a message if there is no window, it does not respond, or the program
// ends with an exit code other than 0.
#include "swr/system/windows_api_win.h"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "tests/support/program_start_win.h"
#include "tests/support/remote_list_win.h"

namespace {

using swr::testing::RemoteList;

constexpr DWORD pollInterval = 50;  // milliseconds, like all times here
constexpr DWORD responseTimeout = 60'000;
constexpr DWORD endTimeout = 60'000;

// The columns before the digests are Name, Folder and Size; Status comes last.
constexpr int nameColumn = 0;
constexpr int folderColumn = 1;
constexpr int firstDigestColumn = 3;

constexpr int rowsAtOnce = 256;

struct Options {
  bool wait = false;
  bool screenshotReady = false;
  bool close = false;
  std::optional<swr::testing::ProgramStart> start;
};

BOOL CALLBACK TakeMainWindow(HWND window, LPARAM result) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  HWND& found = *reinterpret_cast<HWND*>(result);
  found = swr::testing::FindMainWindow(process);
  return found == nullptr;
}

HWND FindOpenWindow() {
  HWND window = nullptr;
  EnumWindows(TakeMainWindow, reinterpret_cast<LPARAM>(&window));
  return window;
}

bool HasUnfinishedRow(const RemoteList& list) {
  const int statusColumn = list.ColumnCount() - 1;
  const int count = list.ItemCount();
  for (int row = 0; row < count; row += rowsAtOnce) {
    for (const auto& cells : list.Texts(row, std::min(rowsAtOnce, count - row), {statusColumn})) {
      if (cells[0] == u"Waiting" || cells[0] == u"Hashing") return true;
    }
  }
  return false;
}

// However long it takes: on a very busy machine, the window may not respond within the timeout.
void WaitForResponse(HWND window) {
  DWORD_PTR response = 0;
  while (!SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, responseTimeout, &response)) {
    if (!IsWindow(window)) throw std::runtime_error("the window has been closed");
  }
}

// The window appears, idle, before it adds the paths of its command line, so only a window that
// stays idle for a while has no work left.
void WaitUntilIdle(HWND window, const RemoteList& list) {
  const HWND cancel = GetDlgItem(window, IDC_CANCEL);
  int idlePolls = 0;
  int finishedRows = -1;
  while (idlePolls < 5) {
    Sleep(pollInterval);
    WaitForResponse(window);
    const bool cancelShown = (GetWindowLongPtrW(cancel, GWL_STYLE) & WS_VISIBLE) != 0;
    const int rows = list.ItemCount();
    if (cancelShown || (rows != finishedRows && HasUnfinishedRow(list))) {
      idlePolls = 0;
      finishedRows = -1;
    } else {
      ++idlePolls;
      finishedRows = rows;
    }
  }
}

void Repaint(HWND window) {
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
  Sleep(500);  // until it appears on the screen
}

std::string ToUtf8(std::u16string text) {
  for (char16_t& unit : text) {
    if (unit < u' ') unit = u'\uFFFD';  // a name may contain a line end or a tab
  }
  const int length = static_cast<int>(text.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, swr::AsWide(text), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, swr::AsWide(text), length, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

void PrintRows(const RemoteList& list) {
  const int statusColumn = list.ColumnCount() - 1;
  std::vector<int> columns = {statusColumn};
  for (int column = firstDigestColumn; column < statusColumn; ++column) columns.push_back(column);
  columns.push_back(folderColumn);
  columns.push_back(nameColumn);

  const int count = list.ItemCount();
  for (int row = 0; row < count; row += rowsAtOnce) {
    for (const auto& cells : list.Texts(row, std::min(rowsAtOnce, count - row), columns)) {
      std::string line;
      for (size_t i = 0; i + 2 < cells.size(); ++i) line += ToUtf8(cells[i]) + '\t';
      const std::u16string& folder = cells[cells.size() - 2];
      const std::u16string& name = cells.back();
      line += ToUtf8(folder.empty() ? name : folder + u'\\' + name) + '\n';
      std::fwrite(line.data(), 1, line.size(), stdout);
    }
  }
  std::fflush(stdout);
}

void Close(HWND window) {
  DWORD id = 0;
  GetWindowThreadProcessId(window, &id);
  const HANDLE process = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_INFORMATION, FALSE, id);
  if (!process) throw std::runtime_error("the process of the window can't be opened");
  PostMessageW(window, WM_CLOSE, 0, 0);
  const DWORD result = WaitForSingleObject(process, endTimeout);
  DWORD code = 0;
  GetExitCodeProcess(process, &code);
  CloseHandle(process);
  if (result != WAIT_OBJECT_0) throw std::runtime_error("the program does not end");
  if (code != 0) throw std::runtime_error("the program ends with code " + std::to_string(code));
}

std::u16string FullPath(const wchar_t* path) {
  wchar_t full[MAX_PATH] = {};
  const DWORD length = GetFullPathNameW(path, MAX_PATH, full, nullptr);
  return swr::FromWide({full, length < MAX_PATH ? length : 0});
}

void Run(const Options& options) {
  const HWND window = options.start ? swr::testing::StartProgramWithWindow(*options.start).window
                                    : FindOpenWindow();
  if (!window) throw std::runtime_error("there is no Sumwright window");
  {
    const RemoteList list(GetDlgItem(window, IDC_LIST));
    if (options.wait) WaitUntilIdle(window, list);
    if (options.screenshotReady) Repaint(window);
    if (!options.close) PrintRows(list);
  }
  if (options.close) Close(window);
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
  Options options;
  for (int i = 1; i < argumentCount; ++i) {
    const std::wstring_view argument = arguments[i];
    if (argument == L"--wait") {
      options.wait = true;
    } else if (argument == L"--screenshot-ready") {
      options.screenshotReady = true;
    } else if (argument == L"--close") {
      options.close = true;
    } else if (argument == L"--start" && i + 1 < argumentCount) {
      swr::testing::ProgramStart& start = options.start.emplace();
      start.program = FullPath(arguments[++i]);
      while (++i < argumentCount) start.arguments.push_back(swr::FromWide(arguments[i]));
    } else {
      std::fprintf(stderr, "read_list: unknown option: %ls\n", arguments[i]);
      return 2;
    }
  }
  _setmode(_fileno(stdout), _O_BINARY);
  try {
    Run(options);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "read_list: %s\n", error.what());
    return 1;
  }
}
