// The readable source form of string tables (see StrtabCommands.cpp), turned into the bytes of a
// table file; shared by `strtab build` and the demo.
#pragma once

#include <string>

namespace lqtool {

// Failure(2) naming "<name>:<line>" for a line that does not read or a text the format cannot
// hold.
std::string BuildStringTable(const std::string& source, const std::string& name);

}  // namespace lqtool
