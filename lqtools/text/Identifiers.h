// Rules for names that users give to objects and that end up as file names: the thirteen
// forbidden characters '?!\/<>:"|*#. and the 22 reserved device names (CON, AUX, COM1-COM9,
// LPT1-LPT9, PRN, NUL), compared exactly and case-sensitively.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

// True when `id` can serve: no leading or trailing white space, no forbidden character, white
// space inside only with `allowSpaces`, and no reserved name. An empty (or null) name is valid.
LQTOOLS_API bool IsValidId(const char16_t* id, bool allowSpaces);

// Replaces every forbidden character by '_', then a reserved name by its spaced-out form
// ("NUL" becomes "N_U_L"). White space is left alone, so the result can still fail IsValidId.
// Always true.
LQTOOLS_API bool NormalizeId(LqWString& id);
