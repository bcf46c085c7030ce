// What lqtool reads of compiled zone files (TZif) beyond what the library needs: the counts of
// both data blocks, and a rewrite that fills an empty 32-bit first block from the 64-bit data.
#pragma once

#include <cstdint>
#include <string>

namespace lqtool {

struct ZoneFileCounts {
  bool valid = false;          // starts with "TZif" and holds its first header
  uint32_t firstBlockTransitions = 0;
  uint32_t secondBlockTransitions = 0;  // 0 for a version 1 file
};

ZoneFileCounts ReadZoneFileCounts(const std::string& bytes);

// A file whose first block carries the transitions and types of the 64-bit block (those that
// fit 32 bits), followed by the original 64-bit block and footer; empty when `bytes` has no
// 64-bit block to take them from.
std::string WithFilledFirstBlock(const std::string& bytes);

}  // namespace lqtool
