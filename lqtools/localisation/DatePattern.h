// ParseDate renders a date-time through a small pattern language, with the names of the wide
// locale record. Runs of one letter are fields: y year, M month (1-2 digits, 3 short name, 4+
// full name), d day, E weekday (1-3 short name, 4+ full name), H hour 0-23, m minute, s second.
// A run's length is a minimum digit count, so "yy" of 2024 is "2024". Text between apostrophes is
// literal, and two apostrophes give one; every other character stands for itself.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/text/LqBasicString.h"

// Appends the rendering of `pattern` for `dateTime` (read as it stands, no zone) to `out`.
LQTOOLS_API void ParseDate(LqWString& out, const LqWString& pattern, const LqDateTime& dateTime);
