// The platform layer: what stands in, on Linux, for the calls of the 16-bit wide-character
// platform this library's behaviour was defined on. It is the lowest layer; every subsystem may
// use it and it uses none of them. Internal: callers outside lqtools must not include it.
//
//   WideRuntime.h     the C library's wide-character routines on 16-bit units (wcslen, wcstol,
//                     wcstod, wcstok, iswspace, towupper, ...), with the platform's 32-bit long
//   WideFormat.h      the bounded printf-style formatter for 16-bit format strings (%s takes a
//                     16-bit text, %hs a narrow one), and the "C" locale's snprintf
//   Locales.h         the fixed "C" and "C.UTF-8" locale objects, whatever the host's setlocale
//   LocaleSettings.h  the user's regional settings (separators, date orders, first weekday) as
//                     the environment's locale gives them
//   Truncation.h      double to integer as the processor truncates, without undefined behaviour
//   Utf8Encoder.h     UTF-16 to UTF-8, the one encoder (the string converters use it too)
//   SystemPath.h      the path boundary: a 16-bit path as a path of this system
//   Clock.h           the real-time clock in seconds and milliseconds
#pragma once

#include "lqtools/platform/Clock.h"
#include "lqtools/platform/LocaleSettings.h"
#include "lqtools/platform/Locales.h"
#include "lqtools/platform/SystemPath.h"
#include "lqtools/platform/Truncation.h"
#include "lqtools/platform/Utf8Encoder.h"
#include "lqtools/platform/WideFormat.h"
#include "lqtools/platform/WideRuntime.h"
