// The log channels. Files are opened with open(2) and O_NOFOLLOW: the default folder of the logs
// is writable by everyone, and a symbolic link planted at a log path must not redirect the
// entries into another file. Each entry goes out in one write on a descriptor in append mode.
#include "lqtools/files/LqLog.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <mutex>

#include "lqtools/files/detail/LogClock.h"
#include "lqtools/platform/WideFormat.h"
#include "lqtools/text/LqBasicString.h"
#include "lqtools/text/Unicode.h"

#ifndef LQTOOLS_LOG_FILE
#define LQTOOLS_LOG_FILE "/tmp/log.txt"
#endif
#ifndef LQTOOLS_EXCEPTION_LOG_FILE
#define LQTOOLS_EXCEPTION_LOG_FILE "/tmp/kelvane.exception.log.txt"
#endif

namespace {

constexpr std::size_t kMessageSize = 4096;
// Above this size the general log is emptied before the next entry; exactly this size stays.
constexpr long long kLogSizeLimit = 0xA00000;

// The lock of printlog, both forms. Built on first use, so that a logging call from another
// library's static constructor still finds it; it lives as long as the process.
std::recursive_mutex& LogMutex() {
  static std::recursive_mutex* mutex = new std::recursive_mutex;
  return *mutex;
}

// Shared buffers of printlog, used only under LogMutex.
char g_narrowMessage[kMessageSize];
char16_t g_wideMessage[kMessageSize];
char g_wideEntry[kMessageSize];
char g_narrowEntry[lq::detail::kLogStampSize + 3 + kMessageSize];

int OpenNoFollow(const char* path, int flags) {
  int fd;
  do {
    fd = ::open(path, flags | O_NOFOLLOW | O_CLOEXEC, 0666);
  } while (fd < 0 && errno == EINTR);
  return fd;
}

void WriteAll(int fd, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(fd, data, size);
    if (written < 0) {
      if (errno == EINTR) continue;
      return;
    }
    data += written;
    size -= static_cast<std::size_t>(written);
  }
}

// Empties the general log once it has grown above the limit. No rotation, no backup.
void TruncateWhenFull(const char* path) {
  long long size = 0;
  const int reader = OpenNoFollow(path, O_RDONLY);
  if (reader >= 0) {
    size = ::lseek(reader, 0, SEEK_END);
    ::close(reader);
  }
  if (size > kLogSizeLimit) {
    const int writer = OpenNoFollow(path, O_WRONLY | O_CREAT | O_TRUNC);
    if (writer >= 0) ::close(writer);
  }
}

int OpenForAppend(const char* path) { return OpenNoFollow(path, O_RDWR | O_CREAT | O_APPEND); }

void WriteToStandardError(const char* text, std::size_t size) {
  std::fwrite(text, 1, size, stderr);
  std::fflush(stderr);
}

}  // namespace

const char* LqLogFileName() { return LQTOOLS_LOG_FILE; }
const char* LqExceptionLogFileName() { return LQTOOLS_EXCEPTION_LOG_FILE; }

void printk(const char* format, ...) {
  char buffer[kMessageSize];
  va_list args;
  va_start(args, format);
  lq::detail::vsnprintf(buffer, sizeof buffer, format, args);
  va_end(args);
  WriteToStandardError(buffer, std::strlen(buffer));
}

void printk(const char16_t* format, ...) {
  char16_t buffer[kMessageSize];
  buffer[0] = 0;
  va_list args;
  va_start(args, format);
  lq::detail::vswprintf(buffer, kMessageSize, format, args);
  va_end(args);
  LqString text;
  Utf16ToUtf8(text, LqWString(buffer));
  const char* bytes = text;
  if (bytes) WriteToStandardError(bytes, static_cast<std::size_t>(text.Length()));
}

void printlog(const char* format, ...) {
  std::lock_guard<std::recursive_mutex> lock(LogMutex());
  const char* path = LqLogFileName();
  TruncateWhenFull(path);
  const int fd = OpenForAppend(path);
  if (fd < 0) return;

  va_list args;
  va_start(args, format);
  lq::detail::vsnprintf(g_narrowMessage, sizeof g_narrowMessage, format, args);
  va_end(args);

  char stamp[lq::detail::kLogStampSize];
  lq::detail::LogTimeStamp(stamp);
  const int length =
      lq::detail::snprintf(g_narrowEntry, sizeof g_narrowEntry, "%s - %s", stamp, g_narrowMessage);
  if (length > 0) WriteAll(fd, g_narrowEntry, std::strlen(g_narrowEntry));
  ::close(fd);
}

void printlog(const char16_t* format, ...) {
  std::lock_guard<std::recursive_mutex> lock(LogMutex());
  const char* path = LqLogFileName();
  TruncateWhenFull(path);
  const int fd = OpenForAppend(path);
  if (fd < 0) return;

  g_wideMessage[0] = 0;
  va_list args;
  va_start(args, format);
  lq::detail::vswprintf(g_wideMessage, kMessageSize, format, args);
  va_end(args);

  char stamp[lq::detail::kLogStampSize];
  const int stampLength = lq::detail::LogTimeStamp(stamp);
  // The entry is built in wide text and each unit is cut to its low byte: no UTF-8 here, so
  // anything beyond Latin-1 is lost. Kept: existing log readers expect one byte per unit. A unit
  // whose low byte is zero ends the entry, as the final text is written up to its terminator.
  std::size_t out = 0;
  auto put = [&](char16_t unit) {
    if (out + 1 < sizeof g_wideEntry) g_wideEntry[out++] = static_cast<char>(unit & 0xFF);
  };
  for (int i = 0; i < stampLength; ++i)
    put(static_cast<unsigned char>(stamp[i]));
  for (const char16_t* p = u" - "; *p; ++p)
    put(*p);
  for (const char16_t* p = g_wideMessage; *p; ++p)
    put(*p);
  g_wideEntry[out] = 0;
  WriteAll(fd, g_wideEntry, std::strlen(g_wideEntry));
  ::close(fd);
}

void printExceptionLog(const char16_t* format, ...) {
  // The file is opened first: when it cannot be, no argument is formatted.
  const int fd = OpenForAppend(LqExceptionLogFileName());
  if (fd < 0) return;

  char16_t message[kMessageSize];
  message[0] = 0;
  va_list args;
  va_start(args, format);
  lq::detail::vswprintf(message, kMessageSize, format, args);
  va_end(args);

  char stamp[lq::detail::kLogStampSize];
  lq::detail::LogTimeStamp(stamp);
  LqString text;
  Utf16ToUtf8(text, LqWString(message));
  const char* bytes = text;
  std::string line;
  line.reserve(static_cast<std::size_t>(text.Length()) + lq::detail::kLogStampSize + 4);
  line += stamp;
  line += " - ";
  if (bytes) line.append(bytes, static_cast<std::size_t>(text.Length()));
  line += '\n';
  WriteAll(fd, line.data(), line.size());
  ::close(fd);
}
