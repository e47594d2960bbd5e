// Loads libraries of Windows only from the system folder: a program that is started from the
// downloads folder must not load a library that was downloaded there under the name of a system
// library.
//
// The program imports only libraries that every version of Windows takes from its own folder. The
// functions of all others are looked up here when first needed.
#pragma once

#include "swr/system/windows_api_win.h"

namespace swr {

// Removes the program's folder, the current folder and the PATH from the library search of the
// process, as far as the system supports that (Windows 8, or 7 with its updates). Call before
// anything that may load a library.
void UseSystemLibrariesOnly();

// The address of a function, possibly null. Converts to a pointer to any function type, so that the
// type is stated once, in the declaration of the variable that it initialises.
class SystemFunction {
 public:
  explicit SystemFunction(FARPROC address) : address_(address) {}
  template <typename Function>
  operator Function*() const {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address_));
  }

 private:
  FARPROC address_;
};

// The function of this name in a library ("wintrust.dll") in the system folder; null when either is
// missing. The library stays loaded until the process ends. May be called on any thread.
SystemFunction FindSystemFunction(const wchar_t* library, const char* name);

// The same for a library that the process has loaded already ("kernel32.dll", "comctl32.dll"): for
// functions that older systems or the import libraries of the tool chain lack.
SystemFunction FindLoadedFunction(const wchar_t* library, const char* name);

}  // namespace swr
