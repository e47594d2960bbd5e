#include "swr/system/standard_stream.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

#include "swr/system/write_all_posix.h"

namespace swr {
namespace {

int DescriptorOf(StandardStream stream) {
  return stream == StandardStream::Output ? STDOUT_FILENO : STDERR_FILENO;
}

}  // namespace

bool IsTerminal(StandardStream stream) { return isatty(DescriptorOf(stream)) == 1; }

bool IsInputTerminal() { return isatty(STDIN_FILENO) == 1; }

uint32_t TerminalWidth(StandardStream stream) {
  winsize size = {};
  constexpr uint32_t defaultWidth = 80;
  if (ioctl(DescriptorOf(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return defaultWidth;
  return size.ws_col;
}

bool EnableColors(StandardStream /*stream*/) {
  const char* terminal = std::getenv("TERM");
  return terminal != nullptr && std::string_view(terminal) != "dumb";
}

uint32_t WriteStandard(StandardStream stream, std::string_view text) {
  return WriteAll(DescriptorOf(stream), text, SystemCall::WriteStream);
}

}  // namespace swr
