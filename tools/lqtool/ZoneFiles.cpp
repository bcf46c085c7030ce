#include "ZoneFiles.h"

#include <cstring>
#include <vector>

namespace lqtool {

namespace {

constexpr std::size_t kHeaderSize = 44;

struct Header {
  uint32_t isutcnt, isstdcnt, leapcnt, timecnt, typecnt, charcnt;
};

uint64_t Big(const std::string& b, std::size_t at, int size) {
  uint64_t value = 0;
  for (int i = 0; i < size; ++i) value = value << 8 | static_cast<unsigned char>(b[at + i]);
  return value;
}

void PutBig(std::string& out, uint64_t value, int size) {
  for (int i = size - 1; i >= 0; --i) out += static_cast<char>(value >> (8 * i) & 0xFF);
}

bool ReadHeader(const std::string& b, std::size_t at, Header& h) {
  if (b.size() < at + kHeaderSize || b.compare(at, 4, "TZif") != 0) return false;
  uint32_t* fields[] = {&h.isutcnt, &h.isstdcnt, &h.leapcnt, &h.timecnt, &h.typecnt, &h.charcnt};
  for (int i = 0; i < 6; ++i) *fields[i] = static_cast<uint32_t>(Big(b, at + 20 + 4 * i, 4));
  return true;
}

// The size of a data block after its header, for 4- or 8-byte times.
uint64_t BlockSize(const Header& h, int timeSize) {
  return uint64_t{h.timecnt} * (timeSize + 1) + uint64_t{h.typecnt} * 6 + h.charcnt +
         uint64_t{h.leapcnt} * (timeSize + 4) + h.isstdcnt + h.isutcnt;
}

}  // namespace

ZoneFileCounts ReadZoneFileCounts(const std::string& bytes) {
  ZoneFileCounts counts;
  Header first{};
  if (!ReadHeader(bytes, 0, first)) return counts;
  counts.valid = true;
  counts.firstBlockTransitions = first.timecnt;
  const uint64_t secondAt = kHeaderSize + BlockSize(first, 4);
  Header second{};
  if (bytes[4] >= '2' && secondAt < bytes.size() && ReadHeader(bytes, secondAt, second))
    counts.secondBlockTransitions = second.timecnt;
  return counts;
}

std::string WithFilledFirstBlock(const std::string& bytes) {
  Header first{};
  if (!ReadHeader(bytes, 0, first) || bytes[4] < '2') return {};
  const uint64_t secondAt = kHeaderSize + BlockSize(first, 4);
  Header h{};
  if (!ReadHeader(bytes, secondAt, h)) return {};
  const uint64_t dataAt = secondAt + kHeaderSize;
  if (dataAt + BlockSize(h, 8) > bytes.size()) return {};

  // The transitions that fit 32 bits, with their type indexes.
  std::vector<std::pair<int32_t, unsigned char>> kept;
  for (uint32_t i = 0; i < h.timecnt; ++i) {
    const auto time = static_cast<int64_t>(Big(bytes, dataAt + 8 * i, 8));
    if (time < INT32_MIN || time > INT32_MAX) continue;
    kept.emplace_back(static_cast<int32_t>(time),
                      static_cast<unsigned char>(bytes[dataAt + 8 * h.timecnt + i]));
  }
  const uint64_t typesAt = dataAt + 9 * uint64_t{h.timecnt};
  std::string out = bytes.substr(0, 20);
  for (uint32_t value : {0u, 0u, 0u, static_cast<uint32_t>(kept.size()), h.typecnt, h.charcnt})
    PutBig(out, value, 4);
  for (const auto& transition : kept) PutBig(out, static_cast<uint32_t>(transition.first), 4);
  for (const auto& transition : kept) out += static_cast<char>(transition.second);
  out += bytes.substr(typesAt, 6 * uint64_t{h.typecnt} + h.charcnt);
  out += bytes.substr(secondAt);
  return out;
}

}  // namespace lqtool
