// Building string table files for tests: through LqStringTableWriter, or byte by byte for files
// the writer would refuse to make.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <lqtools/localisation/LqStringTableWriter.h>
#include <lqtools/security/LqCRC16.h>

// One index entry as it stands in the file.
struct RawEntry {
  uint16_t id;
  uint32_t offset;
  uint16_t length;
};

// A file with exactly these entries and this text area, the checksum worked out.
inline std::string RawTable(const std::vector<RawEntry>& entries, const std::string& texts) {
  std::string bytes;
  auto put16 = [&bytes](uint32_t v) {
    bytes += static_cast<char>(v >> 8 & 0xFF);
    bytes += static_cast<char>(v & 0xFF);
  };
  put16(static_cast<uint32_t>(entries.size()));
  for (const RawEntry& e : entries) {
    put16(e.id);
    put16(e.offset >> 16);
    put16(e.offset & 0xFFFF);
    put16(e.length);
  }
  LqCRC16 crc;
  crc.Add(bytes.data(), static_cast<int>(bytes.size()));
  bytes += static_cast<char>(crc.Value() >> 8);
  bytes += static_cast<char>(crc.Value() & 0xFF);
  return bytes + texts;
}

// The position at which the text area of a raw table with `count` entries begins.
inline uint32_t TextArea(std::size_t count) { return static_cast<uint32_t>(4 + 8 * count); }

inline std::string WrittenTable(const std::vector<std::pair<unsigned, std::string>>& texts) {
  LqStringTableWriter writer;
  for (const auto& [id, text] : texts)
    writer.Add(id, text.c_str(), static_cast<int>(text.size()));
  std::string bytes;
  writer.Build(bytes);
  return bytes;
}
