// StdRuntimeException: the library's one exception type. It marks misuse and broken invariants
// ("Index out of bounds!", "Unexpected call!", "Unexpected situation!", "Null ptr received!");
// ordinary failures are results, never exceptions.
//
// The message is copied once, by the constructor. Copies share that copy and no destructor frees
// it: every exception raised leaks its text, so that the object can be copied freely while the
// stack unwinds.
#pragma once

#include <exception>

#include "lqtools/LqToolsExport.h"

class LQTOOLS_API StdRuntimeException : public std::exception {
 public:
  explicit StdRuntimeException(const char* message);
  StdRuntimeException(const StdRuntimeException& other);
  StdRuntimeException(StdRuntimeException&& other) noexcept;
  StdRuntimeException& operator=(const StdRuntimeException& other);
  StdRuntimeException& operator=(StdRuntimeException&& other) noexcept;
  ~StdRuntimeException() override;

  const char* what() const noexcept override;

 private:
  const char* m_message;
};
