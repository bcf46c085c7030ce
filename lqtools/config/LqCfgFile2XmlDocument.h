// LqCfgFile2XmlDocument: a whole configuration file carried over into an XML document in memory.
// Each group becomes an element, each option an element with its value as text; within one
// element all options come before all groups. The root is `main`; the document takes
// `xmlFileName` as its file name and nothing is written: the caller saves when it wants to.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/xml/XmlDocument.h"

// False when the configuration file does not load; `document` then stays as it was.
LQTOOLS_API bool LqCfgFile2XmlDocument(const char16_t* cfgFileName, const char16_t* xmlFileName,
                                       XmlDocument& document);
