// The system's headers for windows and their controls, in the order they need.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif

#include <windows.h>
// After windows.h, on which it depends.
#include <commctrl.h>
