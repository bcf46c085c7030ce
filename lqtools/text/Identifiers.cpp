#include "lqtools/text/Identifiers.h"

#include "lqtools/platform/WideRuntime.h"

namespace {

const char16_t kForbidden[] = u"'?!\\/<>:\"|*#.";

struct ReservedName {
  const char16_t* name;
  const char16_t* replacement;
};

const ReservedName kReserved[] = {
    {u"CON", u"C_O_N"},    {u"AUX", u"A_U_X"},    {u"COM1", u"C_O_M_1"}, {u"COM2", u"C_O_M_2"},
    {u"COM3", u"C_O_M_3"}, {u"COM4", u"C_O_M_4"}, {u"COM5", u"C_O_M_5"}, {u"COM6", u"C_O_M_6"},
    {u"COM7", u"C_O_M_7"}, {u"COM8", u"C_O_M_8"}, {u"COM9", u"C_O_M_9"}, {u"LPT1", u"L_P_T_1"},
    {u"LPT2", u"L_P_T_2"}, {u"LPT3", u"L_P_T_3"}, {u"LPT4", u"L_P_T_4"}, {u"LPT5", u"L_P_T_5"},
    {u"LPT6", u"L_P_T_6"}, {u"LPT7", u"L_P_T_7"}, {u"LPT8", u"L_P_T_8"}, {u"LPT9", u"L_P_T_9"},
    {u"PRN", u"P_R_N"},    {u"NUL", u"N_U_L"},
};

bool IsForbidden(char16_t c) {
  for (const char16_t* f = kForbidden; *f; ++f)
    if (*f == c) return true;
  return false;
}

const ReservedName* FindReserved(const char16_t* id) {
  for (const ReservedName& reserved : kReserved)
    if (LqWideChar::Compare(id, reserved.name) == 0) return &reserved;
  return nullptr;
}

}  // namespace

bool IsValidId(const char16_t* id, bool allowSpaces) {
  if (!id || !*id) return true;
  if (lq::detail::iswspace(id[0])) return false;
  const char16_t* p = id;
  for (; *p; ++p) {
    if (lq::detail::iswalnum(*p)) continue;
    if (IsForbidden(*p)) return false;
    if (!allowSpaces && lq::detail::iswspace(*p)) return false;
  }
  if (lq::detail::iswspace(p[-1])) return false;
  return FindReserved(id) == nullptr;
}

bool NormalizeId(LqWString& id) {
  for (int i = 0; i < id.Length(); ++i) {
    if (!IsForbidden(id[i])) continue;
    // The text may be borrowed: take an owned copy before the first write.
    if (id.Flags() & LqWString::Borrowed) id.Assign(id, id.Length());
    id[i] = u'_';
  }
  if (const ReservedName* reserved = FindReserved(lq::detail::TextOf(id)))
    id = reserved->replacement;
  return true;
}
