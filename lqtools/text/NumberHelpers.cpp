#include "lqtools/text/NumberHelpers.h"

#include <atomic>
#include <ctime>

#include "lqtools/platform/Truncation.h"

namespace {

const int kBaudrates[] = {110, 300, 600, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};

int KnownBaudrate(int value) {
  for (int rate : kBaudrates)
    if (rate == value) return value;
  return -1;
}

// Relaxed loads and stores, no read-modify-write: concurrent callers may get the same id, as
// documented, but never a torn value.
std::atomic<uint32_t> g_lastId{0};

}  // namespace

int roundi(double value) {
  const int32_t t = lq::detail::TruncateToInt32(value);
  auto result = static_cast<uint32_t>(t);
  if (value - t > 0.5 || t - value > 0.5) result += value >= 0 ? 1u : 0xFFFFFFFFu;
  return static_cast<int32_t>(result);
}

double lq::round(double value) { return roundi(value); }

int BaudrateToIdBr(int baudrate) { return KnownBaudrate(baudrate); }
int IdBrToBaudrate(int id) { return KnownBaudrate(id); }

uint32_t GetNewId() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  std::tm utc{};
  gmtime_r(&now.tv_sec, &utc);
  const uint32_t packed =
      (static_cast<uint32_t>(utc.tm_year + 1900 + 1) & 15u) << 28 |
      static_cast<uint32_t>(utc.tm_mon + 1) << 24 | static_cast<uint32_t>(utc.tm_mday) << 19 |
      static_cast<uint32_t>(utc.tm_hour) << 14 | static_cast<uint32_t>(utc.tm_min) << 8 |
      static_cast<uint32_t>(utc.tm_sec) << 2;
  uint32_t id = g_lastId.load(std::memory_order_relaxed);
  id = packed > id ? packed : id + 1;
  g_lastId.store(id, std::memory_order_relaxed);
  return id;
}
