// File and folder operations by 16-bit path. A path reaches the system as UTF-8 with every '\'
// turned into '/', so Windows-style paths from callers and configuration files keep working.
// Failures are results only; nothing is logged. No shared state: what is safe between threads is
// what the file system makes safe.
#pragma once

#include <cstdio>

#include "lqtools/LqToolsExport.h"

// fopen of the path; text and binary modes are the same here. Null on failure.
LQTOOLS_API FILE* widefopen(const char16_t* path, const char16_t* mode);
// open(2) with the POSIX `flags` and `mode` (the mode under the process umask); -1 on failure.
LQTOOLS_API int wideopen(const char16_t* path, int flags, int mode);
// Removes a file (not a folder): 0, or -1 with errno.
LQTOOLS_API int wideremove(const char16_t* path);
// Renames; as on the original platform an existing target is not replaced (-1, errno EEXIST).
LQTOOLS_API int widerename(const char16_t* from, const char16_t* to);
// Copies through a 1 KiB block. `noTruncate` keeps the tail of a longer old target. False when
// either file cannot be opened; read and write errors are not looked at.
LQTOOLS_API bool widecopy(const char16_t* from, const char16_t* to, bool noTruncate);
// Makes every folder of the directory part of `path`; the last component counts as a file name,
// so the path of a file can be passed as it is. The result is that of the last folder made: false
// when the deepest folder exists already, or when the path has no directory part.
LQTOOLS_API bool CreateDirectoryW(const char16_t* path);
// Removes `folder` after its sub-folders (`recursive`) and its files (`removeFiles`). Non-zero
// when the folder itself went; a folder that still holds something gives 0.
LQTOOLS_API int wideremovefolder(const char16_t* folder, bool recursive, bool removeFiles);
// Removes `folder` only when it holds nothing but the dots entries.
LQTOOLS_API bool wideremovefolderifempty(const char16_t* folder);
// Renames every entry of `folder` (which must end with its separator) whose name starts with
// `oldPrefix` to start with `newPrefix`. True when no rename failed, other than for a vanished
// entry; folders are renamed as well.
LQTOOLS_API bool RenameFilesName(const char16_t* folder, const char16_t* oldPrefix,
                                 const char16_t* newPrefix);
