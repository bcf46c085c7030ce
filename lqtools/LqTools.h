// Every public header of lqtools.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/HexText.h"
#include "lqtools/text/Identifiers.h"
#include "lqtools/text/LqBasicString.h"
#include "lqtools/text/LqCharTraits.h"
#include "lqtools/text/NumberHelpers.h"
#include "lqtools/text/StdRuntimeException.h"
#include "lqtools/text/TextHelpers.h"
#include "lqtools/text/Unicode.h"
