// Bulk writing behind the text of a string, with the outcome of appending each unit alone: the
// same text, the same spare room and the same block size, for one copy instead of one call per
// unit. Code whose result used to grow unit by unit (the Unicode converters) writes through it,
// so that the spare room a caller sees does not depend on how the text was produced.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

#include "lqtools/text/LqBasicString.h"

namespace lq::detail {

template <typename T, typename Traits>
class StringWriter {
 public:
  using String = LqBasicString<T, Traits>;

  // Room for up to `most` units behind the text of `s`, which becomes an owner. A `most` that
  // is the exact count spares the block its second move.
  StringWriter(String& s, std::size_t most) : m_s(s) {
    s.MakeOwned();
    const auto length = static_cast<std::size_t>(s.m_length);
    if (most > static_cast<std::size_t>(std::numeric_limits<int32_t>::max()) - length - 1)
      throw std::bad_alloc();
    if (most > s.m_spare) {
      m_most = most;
      m_end = Outcome(most);
      s.m_data = ReallocateUnits(s.m_data, length + most + 1 + m_end);
      m_moved = true;
    }
  }
  StringWriter(const StringWriter&) = delete;
  StringWriter& operator=(const StringWriter&) = delete;

  // Where the units go.
  T* Data() const { return m_s.m_data + m_s.m_length; }

  // The first `count` units written join the text, as `count` appends of one unit would.
  void Commit(std::size_t count) {
    const uint32_t spare = Outcome(count);
    const bool exact = m_moved && count + spare == m_most + m_end;
    if (m_moved && !exact) {
      m_s.m_data =
          ReallocateUnits(m_s.m_data, static_cast<std::size_t>(m_s.m_length) + count + 1 + spare);
    }
    m_s.m_length += static_cast<int32_t>(count);
    m_s.m_spare = spare;
    m_s.m_data[m_s.m_length] = 0;
  }

 private:
  // The spare room after `count` appends of one unit: each append that finds none moves the
  // block to the length, the terminator and the slack of the policy.
  uint32_t Outcome(std::size_t count) const {
    const uint32_t spare = m_s.m_spare;
    if (count <= spare) return spare - static_cast<uint32_t>(count);
    const uint32_t slack = SlackOf(m_s.m_flags);
    return slack - static_cast<uint32_t>((count - spare - 1) % (std::size_t{slack} + 1));
  }

  String& m_s;
  std::size_t m_most = 0;
  uint32_t m_end = 0;
  bool m_moved = false;
};

}  // namespace lq::detail
