// What every lqtool command shares: failures that end the program with an exit status and one
// line on standard error, reading inputs ("-" is standard input), writing outputs through a
// temporary file renamed into place, UTF-8 and UTF-16 at the boundary, and the progress line.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include <lqtools/text/LqBasicString.h>

namespace lqtool {

// Exit statuses: 1 when the answer is "no" or "not found", 2 for usage errors and unreadable
// inputs.
constexpr int kAnswerNo = 1;
constexpr int kUnusable = 2;

// Ends the command: main prints "lqtool: <subject>: <message>" and exits with `status`.
struct Failure : std::runtime_error {
  Failure(int status, const std::string& subject, const std::string& message)
      : std::runtime_error(subject.empty() ? message : subject + ": " + message),
        status(status) {}
  int status;
};

// The whole content of `path`, or of standard input for "-"; Failure(2) when it cannot be read.
std::string ReadInput(const std::string& path);
// A file name the library can open: "-" is copied into a temporary file first (removed at exit).
std::string InputPath(const std::string& path);
// `bytes` into `path` through a temporary file in the same folder renamed over it, so that an
// interrupted run leaves the old file whole; "-" or "" writes to standard output.
void WriteOutput(const std::string& path, const std::string& bytes);
// A temporary name in the folder of `path`, for writers that make their own file.
std::string TemporaryBeside(const std::string& path);
// Renames `temporary` over `path`, or removes it and fails.
void ReplaceWith(const std::string& temporary, const std::string& path);

LqWString Wide(const std::string& utf8);
std::string Utf8(const LqWString& text);
std::string Utf8(const char16_t* text);

// A progress line on standard error for work on inputs above 64 MB, only when standard error is
// a terminal; cleared when the object goes.
class Progress {
 public:
  Progress(const std::string& what, uint64_t total);
  ~Progress();
  void Update(uint64_t done);

 private:
  std::string m_what;
  uint64_t m_total;
  bool m_shown;
  int m_lastPercent = -1;
};

}  // namespace lqtool
