#include <string>
#include <vector>

#include "cli/program.h"
#include "swr/system/interrupt.h"
#include "swr/system/name_bytes.h"
#include "swr/system/system_library_win.h"
#include "swr/system/wide_text_win.h"

// Keeps the C runtime from expanding wildcards, which it would do in the ANSI code page.
extern "C" {
int _dowildcard = 0;
}

int wmain(int count, wchar_t** arguments) {
  swr::UseSystemLibrariesOnly();
  swr::EndOnInterrupt();
  std::vector<std::string> texts;
  for (int i = 1; i < count; ++i) texts.push_back(swr::NameBytes(swr::FromWide(arguments[i])));
  return cli::RunProgram(texts);
}
