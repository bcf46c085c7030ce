// Free helpers beside the period alignment of LqDateTime (AdjustToPeriod, AdjustToEndPeriod): the
// nearer of two date-times, the snapping of sample times held as doubles, the Gregorian length of
// a month and rounding away from zero. Stateless.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/datetime/LqDateTime.h"

// A reference to `first` or `second` (not a copy), whichever lies nearer to `value`; a tie goes to
// the earlier one, and a value outside the two gives the nearer end.
LQTOOLS_API const LqDateTime& NearestDateTime(const LqDateTime& value, const LqDateTime& first,
                                              const LqDateTime& second);
// `time` floored to a multiple of `period`, forgiving a millionth of a period below the next step.
// A period of exactly 31.0 means a calendar month: day 1 of the month of `time` read as a date-time
// double, at midnight, as a date-time double.
LQTOOLS_API double AdjustToSamplePeriod(double time, double period);
// Days of the value's month by the Gregorian rule (February 2100 has 28).
LQTOOLS_API int DaysOfMonth(const LqDateTime& value);
// `value` rounded away from zero at `decimals` places; -1 rounds to a whole number.
LQTOOLS_API double DCeil(double value, int decimals);
