// Loads libraries by their bare names, as a program without protection does:
//   unprotected_program.exe NAME...
// Shows that the planted libraries are loaded where nothing prevents it.
#include "swr/system/windows_api_win.h"

int wmain(int count, wchar_t** names) {
  for (int i = 1; i < count; ++i) LoadLibraryW(names[i]);
  return 0;
}
