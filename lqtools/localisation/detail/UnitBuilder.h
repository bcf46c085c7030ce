// A text under construction that lives on the stack while it is short and moves to the heap
// only when it grows past its local room, so that formatters hand their result to an LqString
// with a single allocation.
#pragma once

#include <cstddef>
#include <vector>

namespace lq::detail {

template <typename T, std::size_t Local = 128>
class UnitBuilder {
 public:
  UnitBuilder() = default;
  UnitBuilder(const UnitBuilder&) = delete;
  UnitBuilder& operator=(const UnitBuilder&) = delete;

  void Put(T unit) {
    if (m_length == m_room) Grow(m_length + 1);
    m_data[m_length++] = unit;
  }
  void Put(const T* text, std::size_t count) {
    if (m_length + count > m_room) Grow(m_length + count);
    for (std::size_t i = 0; i < count; ++i)
      m_data[m_length + i] = text[i];
    m_length += count;
  }
  void Repeat(T unit, std::size_t count) {
    if (m_length + count > m_room) Grow(m_length + count);
    for (std::size_t i = 0; i < count; ++i)
      m_data[m_length + i] = unit;
    m_length += count;
  }
  // Drops up to `count` units from the end.
  void Drop(std::size_t count) { m_length = count < m_length ? m_length - count : 0; }
  void Clear() { m_length = 0; }

  std::size_t Length() const { return m_length; }
  T At(std::size_t i) const { return m_data[i]; }
  T Last() const { return m_data[m_length - 1]; }
  const T* Data() const { return m_data; }

 private:
  void Grow(std::size_t needed) {
    std::size_t room = m_room * 2;
    if (room < needed) room = needed;
    std::vector<T> bigger(room);
    for (std::size_t i = 0; i < m_length; ++i)
      bigger[i] = m_data[i];
    m_heap.swap(bigger);
    m_data = m_heap.data();
    m_room = room;
  }

  T m_local[Local];
  std::vector<T> m_heap;
  T* m_data = m_local;
  std::size_t m_room = Local;
  std::size_t m_length = 0;
};

}  // namespace lq::detail
