// The path boundary: where a 16-bit path of the library becomes a path of this system. The text
// goes to UTF-8 and every '\' becomes '/', so Windows-style paths from callers and configuration
// files keep working. Every call into the file system goes through here.
#pragma once

#include <string>

namespace lq::detail {

// UTF-8 with '/' for every '\'; an empty text for null.
std::string ToSystemPath(const char16_t* path);
// The narrow form of a 16-bit text (mode strings and the like), through the same UTF-8 route.
std::string ToSystemText(const char16_t* text);

}  // namespace lq::detail
