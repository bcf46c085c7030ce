// The two maps between Olson zone names (Europe/Brussels) and Windows zone names ("Romance
// Standard Time"), one to one over a fixed table of 75 zones. Names compare exactly and
// case-sensitively; a name outside the table (or null, or empty) gives the empty text. The texts
// returned are constant and live as long as the library. The library itself never calls them:
// a caller that starts from a Windows name maps it and hands the Olson name to LqTimeZone::Set.
#pragma once

#include "lqtools/LqToolsExport.h"

LQTOOLS_API const char16_t* OlsonTimeZoneToWin32TimeZone(const char16_t* olsonName);
LQTOOLS_API const char16_t* Win32TimeZoneToOlsonTimeZone(const char16_t* windowsName);
