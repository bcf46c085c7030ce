#include "lqtools/text/StdRuntimeException.h"

#include <cstring>

StdRuntimeException::StdRuntimeException(const char* message)
    : m_message(strdup(message ? message : "")) {}

StdRuntimeException::StdRuntimeException(const StdRuntimeException& other)
    : std::exception(other), m_message(other.m_message) {}

StdRuntimeException::StdRuntimeException(StdRuntimeException&& other) noexcept
    : std::exception(other), m_message(other.m_message) {}

StdRuntimeException& StdRuntimeException::operator=(const StdRuntimeException& other) {
  if (this != &other) std::exception::operator=(other);
  m_message = other.m_message;
  return *this;
}

StdRuntimeException& StdRuntimeException::operator=(StdRuntimeException&& other) noexcept {
  if (this != &other) std::exception::operator=(other);
  m_message = other.m_message;
  return *this;
}

// Kept: the message is not freed, since copies made during unwinding share it.
StdRuntimeException::~StdRuntimeException() = default;

const char* StdRuntimeException::what() const noexcept { return m_message; }
