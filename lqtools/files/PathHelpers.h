// Where the running program lies, and paths taken apart. Paths are LqWString; whole paths are
// limited to the platform's 260 units where the original used fixed buffers.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

// The folder of the host process's executable (not of this library), with its closing separator.
LQTOOLS_API LqWString GetAppPath();
// The same as GetAppPath.
LQTOOLS_API LqWString GetSharePath();
// `name` gets file name and extension, `folder` drive and directory with the closing separator.
// Kept quirk: the extension keeps its dot and another one is put before it, so "c:\a\b.txt" gives
// "b..txt"; callers have lived with the doubled dot. Always true.
LQTOOLS_API bool ExtractNameFromPath(const LqWString& path, LqWString& name, LqWString& folder);
// The folder above `path`, ending with '/' whatever separator the path used. False when the path
// has no separator to cut at.
LQTOOLS_API bool PreviousDirectory(const LqWString& path, LqWString& parent);
// `relative` resolved against `base`, as an absolute path with '/' separators. Changes the
// process's current directory while it runs: another thread opening a relative path meanwhile
// sees `base`. An empty `full` when the result exceeds 260 units.
LQTOOLS_API LqWString& RelativePathToFullPath(const LqWString& base, const LqWString& relative,
                                              LqWString& full);
