// The one table of the 75 zones the library knows by name: the Olson name, the Windows name and
// the standard offset in seconds east of UTC. Rows run from the far east to the far west. Both
// name maps and the built-in standard offsets read it; no value is derived from a zone file.
#pragma once

#include <cstdint>

namespace lq::detail {

struct ZoneRow {
  const char16_t* olson;
  const char16_t* windows;
  int32_t standardOffset;
};

constexpr int kZoneRowCount = 75;
extern const ZoneRow kZoneRows[kZoneRowCount];

}  // namespace lq::detail
