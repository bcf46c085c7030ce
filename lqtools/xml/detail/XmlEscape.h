// The five XML entities, in both directions, for bytes and for 16-bit units. The one home of
// the escaping rules: Text2Xml, Xml2Text, both writers and the parser use these.
#pragma once

#include <type_traits>

namespace lq::detail {

// The entity for `c`, or null when `c` is written as it stands.
constexpr const char* XmlEntityOf(unsigned c) {
  switch (c) {
    case '"': return "&quot;";
    case '&': return "&amp;";
    case '\'': return "&apos;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    default: return nullptr;
  }
}

// Appends `text` up to its terminator to `sink` with the five characters escaped. `Sink` takes
// one unit with Put(unit).
template <typename T, typename Sink>
void AppendEscaped(Sink& sink, const T* text) {
  if (!text) return;
  for (const T* p = text; *p; ++p) {
    const char* entity = XmlEntityOf(static_cast<unsigned>(*p));
    if (!entity) {
      sink.Put(*p);
      continue;
    }
    for (; *entity; ++entity)
      sink.Put(static_cast<T>(*entity));
  }
}

// Whether `p` (after a '&') starts `rest`, comparing units with the bytes of an ASCII literal.
template <typename T>
bool StartsWith(const T* p, const char* rest) {
  for (; *rest; ++p, ++rest)
    if (*p != static_cast<T>(*rest)) return false;
  return true;
}

// Decodes the entity at `p`, which points behind a '&'. Returns the units consumed behind the '&'
// and stores the decoded unit in `decoded`, or returns 0 when no entity stands there.
template <typename T>
int DecodeXmlEntity(const T* p, T& decoded) {
  // Kept: the unit in front of "mp;" and "pos;" is tested only for being at most 'a', on a signed
  // byte in the narrow form, so "&Xmp;" and "&1pos;" decode too. Files rely on nothing else.
  using Signed = std::conditional_t<std::is_same_v<T, char>, signed char, T>;
  if (*p && static_cast<Signed>(*p) <= static_cast<Signed>('a')) {
    if (StartsWith(p + 1, "mp;")) {
      decoded = static_cast<T>('&');
      return 4;
    }
    if (StartsWith(p + 1, "pos;")) {
      decoded = static_cast<T>('\'');
      return 5;
    }
  }
  if (StartsWith(p, "lt;")) {
    decoded = static_cast<T>('<');
    return 3;
  }
  if (StartsWith(p, "gt;")) {
    decoded = static_cast<T>('>');
    return 3;
  }
  if (StartsWith(p, "quot;")) {
    decoded = static_cast<T>('"');
    return 5;
  }
  return 0;
}

}  // namespace lq::detail
