// LqBasicString: the string of the whole lqtools interface, header-only.
//
//   LqString  = LqBasicString<char, LqChar>         bytes, UTF-8 or plain ASCII by convention
//   LqWString = LqBasicString<char16_t, LqWideChar>  UTF-16 code units
//
// A string either owns a heap block or borrows a text it does not own (the static empty text or a
// caller's buffer); the `Borrowed` bit tells which. Wrapping a literal with `copy` false costs no
// allocation, and every mutator first makes the string an owner.
//
// Growth is not geometric. Each allocation adds a fixed slack chosen by the string's policy:
// none (exact fit), GrowSmallBlock (255 units) or GrowLargeBlock (65535 units). Code that builds a
// long text selects a block policy before its loop and hands the string back with Compact(). Every
// Assign allocates a new block, so assigning a part of the string's own text is safe.
//
// Converting between the two instantiations widens each byte as a signed char (0xC3 becomes
// 0xFFC3) or keeps the low byte of each unit. That is no Unicode conversion: use Utf8ToUtf16 and
// Utf16ToUtf8 for text that may hold non-ASCII characters.
//
// Checked element access and Trim throw StdRuntimeException("Index out of bounds!"). A string has
// no lock: concurrent reads are fine, a write needs outside exclusion.
#pragma once

#include <cstdint>
#include <functional>
#include <type_traits>

#include "lqtools/text/LqCharTraits.h"
#include "lqtools/text/StdRuntimeException.h"
#include "lqtools/text/detail/StringBlock.h"

template <typename T, typename Traits>
class LqBasicString {
  static constexpr bool kNarrow = std::is_same_v<T, char>;
  using Other = std::conditional_t<kNarrow, char16_t, char>;
  using OtherTraits = std::conditional_t<kNarrow, LqWideChar, LqChar>;

 public:
  using CharType = T;
  using OtherString = LqBasicString<Other, OtherTraits>;

  enum : uint32_t {
    Borrowed = 16,
    GrowSmallBlock = lq::detail::kGrowSmallBlock,
    GrowLargeBlock = lq::detail::kGrowLargeBlock
  };

  // ------------------------------------------------------------------------------------------
  // Construction

  // The static empty text, borrowed. Allocates nothing.
  LqBasicString() : m_data(Traits::EmptyString()), m_flags(Borrowed), m_spare(0), m_length(0) {}

  explicit LqBasicString(unsigned growth)
      : m_data(Traits::EmptyString()),
        m_flags((growth & lq::detail::kGrowthMask) | Borrowed),
        m_spare(0),
        m_length(0) {}

  // `copy` true: an owned copy (an owned empty text for null). `copy` false: borrows `text`.
  LqBasicString(const T* text, bool copy = true) : LqBasicString() {
    if (copy) {
      Assign(text, Traits::Length(text));
    } else {
      Attach(text);
    }
  }

  // An owned copy with growth policy none, whatever the source had.
  LqBasicString(const LqBasicString& other) : LqBasicString() {
    Assign(other.m_data, other.m_length);
  }

  // Widening (LqWString from bytes) or narrowing (LqString from units), see the file comment.
  LqBasicString(const Other* text) : LqBasicString() { ConvertFrom(text); }
  LqBasicString(const OtherString& text) : LqBasicString() {
    ConvertFrom(static_cast<const Other*>(text));
  }

  ~LqBasicString() {
    if (!(m_flags & Borrowed)) lq::detail::FreeUnits(m_data);
  }

  // ------------------------------------------------------------------------------------------
  // Replacing the text

  // Takes `length` units from `text`, which need not be terminated there. Allocates a new block
  // and frees the old one only after the copy.
  void Assign(const T* text, int length) {
    if (length < 0) length = 0;
    m_length = length;
    T* block = Allocate(static_cast<std::size_t>(length) + 1);
    lq::detail::CopyUnits(block, text, static_cast<std::size_t>(length));
    block[length] = 0;
    AdoptBlock(block);
  }

  LqBasicString& operator=(const T* text) {
    Assign(text, Traits::Length(text));
    return *this;
  }

  // The target keeps its own growth policy.
  LqBasicString& operator=(const LqBasicString& other) {
    Assign(other.m_data, other.m_length);
    return *this;
  }

  // Borrows `text`; the growth policy is lost.
  void Attach(const T* text) {
    if (!(m_flags & Borrowed)) lq::detail::FreeUnits(m_data);
    m_flags = Borrowed;
    m_data = const_cast<T*>(text);
    m_length = Traits::Length(text);
  }

  // A fresh writable block for `length` units; the old text is lost. With `keepEmpty` the string
  // is empty and the next `length` appends go in place; otherwise its length is `length` and the
  // caller fills the buffer.
  T* Prepare(int length, bool keepEmpty) {
    if (length < 0) length = 0;
    T* block = Allocate(static_cast<std::size_t>(length) + 1);
    AdoptBlock(block);
    if (keepEmpty) {
      m_spare = static_cast<uint32_t>(length);
      m_length = 0;
    } else {
      m_length = length;
    }
    m_data[m_length] = 0;
    return m_data;
  }

  // ------------------------------------------------------------------------------------------
  // Growth control

  void SetGrowth(unsigned growth) { m_flags = (m_flags & ~lq::detail::kGrowthMask) | (growth & lq::detail::kGrowthMask); }
  // Leaves a policy that a caller chose alone. Text builders use this on their output argument.
  void SetGrowthIfNone(unsigned growth) {
    if ((m_flags & lq::detail::kGrowthMask) == 0) SetGrowth(growth);
  }
  // Drops the policy and gives back the spare room.
  void Compact() {
    if ((m_flags & lq::detail::kGrowthMask) == 0) return;
    m_flags &= ~lq::detail::kGrowthMask;
    if (m_spare == 0) return;
    T* block = Allocate(static_cast<std::size_t>(m_length) + 1);
    if (m_data) {
      lq::detail::CopyUnits(block, m_data, static_cast<std::size_t>(m_length) + 1);
    } else {
      block[0] = 0;
    }
    AdoptBlock(block);
    m_spare = 0;
  }

  // ------------------------------------------------------------------------------------------
  // Appending

  LqBasicString& operator+=(const LqBasicString& s) {
    MakeOwned();  // first, as `s` may be this very string
    AppendUnits(s.m_data, s.m_length);
    return *this;
  }
  LqBasicString& operator+=(const T* text) {
    MakeOwned();
    AppendUnits(text, Traits::Length(text));
    return *this;
  }
  LqBasicString& operator+=(T c) {
    MakeOwned();
    if (m_spare != 0) {
      m_data[m_length++] = c;
      m_data[m_length] = 0;
      --m_spare;
      return *this;
    }
    m_data = Reallocate(static_cast<std::size_t>(m_length) + 2);
    m_data[m_length++] = c;
    m_data[m_length] = 0;
    return *this;
  }

  // ------------------------------------------------------------------------------------------
  // Reading

  operator const T*() const { return m_data; }
  int Length() const { return m_length; }
  bool IsEmpty() const { return m_length == 0; }
  // Spare units and flag bits, for diagnostics and tests.
  uint32_t Spare() const { return m_spare; }
  uint32_t Flags() const { return m_flags; }

  // Accepts 0 to Length(), so that the terminator can be read.
  T& operator[](int i) { return m_data[Checked(i)]; }
  T operator[](int i) const { return m_data[Checked(i)]; }

  // The index of the first `c` from `start`, or -1.
  int Find(T c, int start) const {
    if (!m_data || start < 0 || start > m_length) return -1;
    for (int i = start; m_data[i]; ++i)
      if (m_data[i] == c) return i;
    return -1;
  }
  // The first position from `start` where `text` stands, or -1. An empty `text` is never found.
  int Find(const T* text, int start) const {
    if (!m_data || !text || start < 0 || start > m_length) return -1;
    const int length = Traits::Length(text);
    for (int i = start; m_data[i]; ++i)
      if (m_data[i] == text[0] && Traits::Compare(m_data + i, text, length) == 0) return i;
    return -1;
  }
  int ReverseFind(T c) const {
    for (int i = m_length - 1; i >= 0; --i)
      if (m_data[i] == c) return i;
    return -1;
  }

  LqBasicString Left(int count) const {
    LqBasicString result;
    if (m_length != 0) result.Assign(m_data, Clamp(count, m_length));
    return result;
  }
  LqBasicString Right(int count) const {
    LqBasicString result;
    const int n = Clamp(count, m_length);
    result.Assign(m_data + (m_length - n), n);
    return result;
  }
  LqBasicString Mid(int start, int count) const {
    LqBasicString result;
    if (start >= 0 && start < m_length)
      result.Assign(m_data + start, Clamp(count, m_length - start));
    return result;
  }
  // Compares the last unit with the first unit of `text`; only one-unit texts are meant.
  bool EndsWith(const T* text) const {
    return m_length != 0 && text && m_data[m_length - 1] == text[0];
  }

  // ------------------------------------------------------------------------------------------
  // In-place edits

  // Bit 1 trims the left side, bit 2 the right side. Nothing to cut leaves the string untouched.
  void Trim(unsigned sides) {
    if (!m_data) return;
    int i = 0;
    if (sides & 1u)
      while (Traits::IsSpace(m_data[Checked(i)]))
        ++i;
    int r = m_length - 1;
    if ((sides & 2u) && i < r) {
      while (Traits::IsSpace(m_data[Checked(r)])) {
        if (--r == i) break;
      }
    }
    if (i != 0 || r != m_length - 1) Assign(m_data + i, r - i + 1);
  }

  // Kept: Replace and MakeUpper skip the make-owned step, so on a borrowed text they write into
  // the caller's buffer. Callers use them on owned strings only.
  void Replace(T from, T to) {
    for (int i = 0; i < m_length; ++i)
      if (m_data[i] == from) m_data[i] = to;
  }
  void MakeUpper() {
    for (int i = 0; i < m_length; ++i)
      m_data[i] = static_cast<T>(Traits::ToUpper(m_data[i]));
  }

 private:
  friend class lq::detail::StringWriter<T, Traits>;

  static int Clamp(int count, int limit) { return count < 0 ? 0 : (count < limit ? count : limit); }

  int Checked(int i) const {
    if (static_cast<uint32_t>(i) > static_cast<uint32_t>(m_length))
      throw StdRuntimeException("Index out of bounds!");
    return i;
  }

  // A block of `units` units plus the slack of the policy, which becomes the spare room.
  T* Allocate(std::size_t units) {
    m_spare = lq::detail::SlackOf(m_flags);
    return lq::detail::AllocateUnits<T>(units + m_spare);
  }

  // Moves an owned block to `units` plus slack units, keeping the text.
  T* Reallocate(std::size_t units) {
    m_spare = lq::detail::SlackOf(m_flags);
    return lq::detail::ReallocateUnits(m_data, units + m_spare);
  }

  // Takes `block` as the text, freeing an owned block or ending the borrow.
  void AdoptBlock(T* block) {
    if (m_flags & Borrowed) {
      m_flags &= ~static_cast<uint32_t>(Borrowed);
    } else {
      lq::detail::FreeUnits(m_data);
    }
    m_data = block;
  }

  // A borrowed length may have gone stale, so it is measured anew.
  void MakeOwned() {
    if (m_flags & Borrowed) Assign(m_data, Traits::Length(m_data));
  }

  void AppendUnits(const T* text, int count) {
    if (count <= 0) return;
    const auto n = static_cast<uint32_t>(count);
    if (m_spare >= n) {
      lq::detail::CopyUnits(m_data + m_length, text, n);
      m_spare -= n;
    } else if (!std::less<const T*>()(text, m_data) &&
               !std::less<const T*>()(m_data + m_length, text)) {
      // Appending a part of the own text: copy into a new block before the old one goes.
      T* block = Allocate(static_cast<std::size_t>(m_length) + n + 1);
      lq::detail::CopyUnits(block, m_data, static_cast<std::size_t>(m_length));
      lq::detail::CopyUnits(block + m_length, text, n);
      lq::detail::FreeUnits(m_data);
      m_data = block;
    } else {
      m_data = Reallocate(static_cast<std::size_t>(m_length) + n + 1);
      lq::detail::CopyUnits(m_data + m_length, text, n);
    }
    m_length += count;
    m_data[m_length] = 0;
  }

  void ConvertFrom(const Other* text) {
    if constexpr (kNarrow) {
      // Narrowing keeps the low byte of each unit.
      Prepare(OtherTraits::Length(text), true);
      if (text)
        for (const Other* p = text; *p; ++p)
          *this += static_cast<T>(*p & 0xff);
    } else {
      // Widening: an empty source leaves the string as it stands; each byte is sign-extended.
      const int length = OtherTraits::Length(text);
      if (length == 0) return;
      Prepare(length, true);
      for (const Other* p = text; *p; ++p)
        *this += static_cast<T>(static_cast<signed char>(*p));
    }
  }

  T* m_data;
  uint32_t m_flags;
  uint32_t m_spare;
  int32_t m_length;
};

// ------------------------------------------------------------------------------------------
// Operators. Texts compare unit by unit as unsigned values: operator< is the order of every map
// keyed by a string in lqtools, so wide keys sort by UTF-16 code unit.

template <typename T, typename Traits>
LqBasicString<T, Traits> operator+(const LqBasicString<T, Traits>& a,
                                   const LqBasicString<T, Traits>& b) {
  LqBasicString<T, Traits> result(a);
  result += b;
  return result;
}

namespace lq::detail {
template <typename T, typename Traits>
const T* TextOf(const LqBasicString<T, Traits>& s) {
  const T* text = s;
  return text ? text : Traits::EmptyString();
}
template <typename T, typename Traits>
const T* TextOf(const T* text) {
  return text ? text : Traits::EmptyString();
}
}  // namespace lq::detail

#define LQ_STRING_COMPARISON(op, test)                                                     \
  template <typename T, typename Traits>                                                   \
  bool operator op(const LqBasicString<T, Traits>& a, const LqBasicString<T, Traits>& b) { \
    return Traits::Compare(lq::detail::TextOf(a), lq::detail::TextOf(b)) test;             \
  }                                                                                        \
  template <typename T, typename Traits>                                                   \
  bool operator op(const LqBasicString<T, Traits>& a, const T* b) {                        \
    return Traits::Compare(lq::detail::TextOf(a), lq::detail::TextOf<T, Traits>(b)) test;  \
  }                                                                                        \
  template <typename T, typename Traits>                                                   \
  bool operator op(const T* a, const LqBasicString<T, Traits>& b) {                        \
    return Traits::Compare(lq::detail::TextOf<T, Traits>(a), lq::detail::TextOf(b)) test;  \
  }

LQ_STRING_COMPARISON(==, == 0)
LQ_STRING_COMPARISON(!=, != 0)
LQ_STRING_COMPARISON(<, < 0)
#undef LQ_STRING_COMPARISON

using LqString = LqBasicString<char, LqChar>;
using LqWString = LqBasicString<char16_t, LqWideChar>;
