// Language ids of the host platform, their two-letter codes and the names of the languages, each
// written in its own language. The low 10 bits of an id are the primary language, the rest the
// sublanguage. Pure lookups over fixed text: every pointer returned stays valid for the life of
// the library, nothing is allocated. Unknown input gives -1 or "??".
#pragma once

#include "lqtools/LqToolsExport.h"

// The primary id of a code, by its first two characters ignoring case ("en-GB" gives 9), or -1.
// "sr" is read as 26. Null gives -1.
LQTOOLS_API int Win32LanguageCodeToLanguageId(char* code);
// The code of the primary language of an id, or "??".
LQTOOLS_API const char* Win32LanguageIdToLanguageCode(int languageId);
// The name of the primary language of an id in that language (UTF-8), or "??". Of the ids with
// primary language 26, exactly 31770 (0x7C1A) gives "Srpski", every other "Hrvatski".
LQTOOLS_API const char* Win32LanguageIdToLanguageName(int languageId);
