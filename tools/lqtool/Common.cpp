#include "Common.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <lqtools/text/Unicode.h>

namespace lqtool {

namespace {

constexpr uint64_t kProgressThreshold = 64ull << 20;

std::vector<std::string>& TemporaryInputs() {
  static std::vector<std::string> files;
  static const bool registered = [] {
    std::atexit([] {
      for (const std::string& file : TemporaryInputs()) std::remove(file.c_str());
    });
    return true;
  }();
  (void)registered;
  return files;
}

std::string ErrorText() { return std::strerror(errno); }

}  // namespace

std::string ReadInput(const std::string& path) {
  std::FILE* file = path == "-" ? stdin : std::fopen(path.c_str(), "rb");
  if (!file) throw Failure(kUnusable, path, ErrorText());
  struct stat status {};
  if (fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode)) {
    if (file != stdin) std::fclose(file);
    throw Failure(kUnusable, path, "is a folder");
  }
  std::string bytes;
  char buffer[1 << 16];
  for (std::size_t got; (got = std::fread(buffer, 1, sizeof buffer, file)) > 0;)
    bytes.append(buffer, got);
  const bool failed = std::ferror(file) != 0;
  if (file != stdin) std::fclose(file);
  if (failed) throw Failure(kUnusable, path, "read error");
  return bytes;
}

std::string InputPath(const std::string& path) {
  if (path != "-") {
    if (access(path.c_str(), R_OK) != 0) throw Failure(kUnusable, path, ErrorText());
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
      throw Failure(kUnusable, path, "is a folder");
    return path;
  }
  const std::string bytes = ReadInput("-");
  char name[] = "/tmp/lqtool-stdin-XXXXXX";
  const int descriptor = mkstemp(name);
  if (descriptor < 0) throw Failure(kUnusable, "-", ErrorText());
  TemporaryInputs().push_back(name);
  const bool written =
      write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  close(descriptor);
  if (!written) throw Failure(kUnusable, "-", "cannot keep standard input");
  return name;
}

std::string TemporaryBeside(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash);
  std::string name = folder + "/.lqtool-XXXXXX";
  const int descriptor = mkstemp(name.data());
  if (descriptor < 0) throw Failure(kUnusable, path, "cannot write in its folder: " + ErrorText());
  close(descriptor);
  return name;
}

void ReplaceWith(const std::string& temporary, const std::string& path) {
  // Keep the permissions an existing file had; a new file gets the usual ones under the umask.
  struct stat status {};
  if (stat(path.c_str(), &status) == 0) {
    chmod(temporary.c_str(), status.st_mode & 07777);
  } else {
    const mode_t mask = umask(0);
    umask(mask);
    chmod(temporary.c_str(), 0666 & ~mask);
  }
  if (std::rename(temporary.c_str(), path.c_str()) != 0) {
    const std::string reason = ErrorText();
    std::remove(temporary.c_str());
    throw Failure(kUnusable, path, reason);
  }
}

void WriteOutput(const std::string& path, const std::string& bytes) {
  if (path.empty() || path == "-") {
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
    return;
  }
  const std::string temporary = TemporaryBeside(path);
  std::FILE* file = std::fopen(temporary.c_str(), "wb");
  const bool written = file && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  const bool closed = file && std::fclose(file) == 0;
  if (!written || !closed) {
    std::remove(temporary.c_str());
    throw Failure(kUnusable, path, "cannot write");
  }
  ReplaceWith(temporary, path);
}

LqWString Wide(const std::string& utf8) {
  LqWString wide;
  wide.SetGrowthIfNone(LqWString::GrowLargeBlock);
  Utf8ToUtf16(wide, utf8.data(), static_cast<int>(utf8.size()));
  return wide;
}

std::string Utf8(const LqWString& text) {
  LqString narrow;
  narrow.SetGrowthIfNone(LqString::GrowLargeBlock);
  Utf16ToUtf8(narrow, text);
  return std::string(static_cast<const char*>(narrow), static_cast<std::size_t>(narrow.Length()));
}

std::string Utf8(const char16_t* text) { return Utf8(LqWString(text ? text : u"", false)); }

Progress::Progress(const std::string& what, uint64_t total)
    : m_what(what), m_total(total), m_shown(total > kProgressThreshold && isatty(2)) {
  if (!m_shown) return;
  // Work that reports no steps shows what it is busy with until it ends.
  std::fprintf(stderr, "\r%s: %llu MB...", m_what.c_str(),
               static_cast<unsigned long long>(m_total >> 20));
  std::fflush(stderr);
  m_lastPercent = 0;
}

Progress::~Progress() {
  if (m_shown && m_lastPercent >= 0) std::fprintf(stderr, "\r\033[K");
}

void Progress::Update(uint64_t done) {
  if (!m_shown || m_total == 0) return;
  const int percent = static_cast<int>(done * 100 / m_total);
  if (percent == m_lastPercent) return;
  m_lastPercent = percent;
  std::fprintf(stderr, "\r%s: %d%%", m_what.c_str(), percent);
  std::fflush(stderr);
}

}  // namespace lqtool
