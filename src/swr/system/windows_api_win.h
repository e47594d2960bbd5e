// The only place that includes the system header, so that its macros are the same everywhere.
#pragma once

#ifndef UNICODE
#define UNICODE
#endif
#ifndef NOMINMAX
#define NOMINMAX  // keeps std::min and std::max usable
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN  // without sockets, cryptography and OLE
#endif

#include <windows.h>
