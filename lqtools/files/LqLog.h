// The three log channels: printk to the debugger output (standard error here), printlog to the
// general log file and printExceptionLog to the exception log file. Plain printf-style functions,
// with no logger object, no level and no settings: the two file names are fixed when the library
// is built (LqLogFileName, LqExceptionLogFileName).
//
// Entries of both files begin with the UTC time "YYYY-MM-DDThh:mm:ss.mmmZ" and " - ". printlog
// adds no line end (the format brings its own); printExceptionLog adds one. printlog runs under
// one process-wide recursive mutex, shared by its narrow and wide forms, and empties the file
// before an entry once it has grown above 10 MiB. The exception log has neither lock nor limit.
//
// Logging never throws and never reports: a file that cannot be opened loses the entry. Every
// entry opens and closes the file, which is never opened through a symbolic link.
#pragma once

#include "lqtools/LqToolsExport.h"

// The path of the general log file and of the exception log file, as built in.
LQTOOLS_API const char* LqLogFileName();
LQTOOLS_API const char* LqExceptionLogFileName();

// To standard error, formatted into 4096 units, with no time and no line end added. The wide
// form is written as UTF-8.
LQTOOLS_API void printk(const char* format, ...) __attribute__((format(printf, 1, 2)));
LQTOOLS_API void printk(const char16_t* format, ...);

// One entry to the general log. A message is cut to 4095 bytes; the wide form keeps the low
// byte of each unit (Latin-1 at best, no UTF-8) and cuts the whole entry to 4095 bytes.
LQTOOLS_API void printlog(const char* format, ...) __attribute__((format(printf, 1, 2)));
LQTOOLS_API void printlog(const char16_t* format, ...);

// One line to the exception log, as UTF-8, with a line feed added.
LQTOOLS_API void printExceptionLog(const char16_t* format, ...);
