// Reads and writes the clipboard text, for scripts:
//   clipboard_text set TEXT     TEXT in ASCII
//   clipboard_text get          prints it in UTF-8; nothing when there is no text
#include <cstdio>
#include <exception>
#include <string>

#include "swr/text/encoding.h"
#include "tests/ui/desktop_state_win.h"

int main(int count, char** arguments) {
  const std::string command = count > 1 ? arguments[1] : "";
  try {
    if (command == "set" && count == 3) {
      app::testing::CopyText(swr::Utf8ToWide(arguments[2]));
    } else if (command == "get" && count == 2) {
      std::printf("%s", swr::WideToUtf8(app::testing::CopiedText().value_or(u"")).c_str());
    } else {
      std::fprintf(stderr, "usage: clipboard_text set TEXT | get\n");
      return 2;
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "clipboard_text: %s\n", failure.what());
    return 1;
  }
  return 0;
}
