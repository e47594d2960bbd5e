// The one place that includes the system header, so that its macros are set alike everywhere.
#pragma once

#ifndef UNICODE
#define UNICODE
#endif
#ifndef NOMINMAX
#define NOMINMAX  // std::min and std::max stay usable
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN  // no sockets, no cryptography, no OLE unless asked for
#endif

#include <windows.h>
