// File and folder operations by wide path. Paths reach the system as UTF-8 with every '\'
// turned into '/'. Failures are results only; nothing is logged.
#pragma once

#include <cstdio>

#include "lqtools/LqToolsExport.h"

// fopen of the path; text and binary modes are the same here. Null on failure.
LQTOOLS_API FILE* widefopen(const char16_t* path, const char16_t* mode);
