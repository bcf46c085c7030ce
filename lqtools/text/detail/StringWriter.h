// Bulk writing behind the text of a string, with the outcome of appending the units one by one
// (Commit) or in one piece (CommitAppend): the same text, the same spare room and the same block
// size, for one copy and a few moves of the block. Code whose result used to grow that way (the
// Unicode converters, the XML writer) writes through it, so that the spare room a caller sees does
// not depend on how the text was produced.
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

  // Where the units go, with room for `more` units behind the `written` ones. Room grows by half
  // at least, so that a text of unknown length costs a few moves; the block may move.
  T* Room(std::size_t written, std::size_t more) {
    const std::size_t room = m_moved ? m_most : m_s.m_spare;
    if (more > room - written) {
      const auto length = static_cast<std::size_t>(m_s.m_length);
      const auto limit = static_cast<std::size_t>(std::numeric_limits<int32_t>::max()) - length - 1;
      if (more > limit - written) throw std::bad_alloc();
      std::size_t grown = written + more;
      if (grown < room + room / 2) grown = room + room / 2 < limit ? room + room / 2 : limit;
      m_s.m_data = ReallocateUnits(m_s.m_data, length + grown + 1);
      m_most = grown;
      m_end = 0;
      m_moved = true;
    }
    return Data();
  }

  // The first `count` units written join the text, as one append of them all would.
  void CommitAppend(std::size_t count) {
    uint32_t spare = m_s.m_spare;
    if (count <= spare) {
      spare -= static_cast<uint32_t>(count);
    } else {
      spare = SlackOf(m_s.m_flags);
    }
    if (m_moved) {
      m_s.m_data =
          ReallocateUnits(m_s.m_data, static_cast<std::size_t>(m_s.m_length) + count + 1 + spare);
    }
    m_s.m_length += static_cast<int32_t>(count);
    m_s.m_spare = spare;
    m_s.m_data[m_s.m_length] = 0;
  }

  // The first `count` units written join the text, as `count` appends of one unit would. After
  // Room, the block moves once more to its exact size.
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
