// Configuration files written into a temporary folder for the tests.
#pragma once

#include <lqtools/config/LqCfgFile.h>
#include <lqtools/text/Unicode.h>

#include <string>

#include "support/TempFolder.h"

// The text of a group's option, or "<none>".
inline std::string OptionText(const LqCfgFile::LqGroup* group, const char16_t* name) {
  if (!group) return "<no group>";
  const LqWString none(u"<none>");
  LqString narrow;
  Utf16ToUtf8(narrow, group->OptionValue(LqWString(name), none));
  return std::string(static_cast<const char*>(narrow), static_cast<std::size_t>(narrow.Length()));
}

// `body` behind the header, as a file of the folder.
inline LqWString WriteCfg(const TempFolder& folder, const std::string& body,
                          const std::string& name = "test.cfg") {
  folder.Write(name, "ASCII\r\n" + body);
  return folder.Wide(name);
}
