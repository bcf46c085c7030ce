#include "lqtools/platform/Locales.h"

namespace lq::detail {

locale_t ClassicLocale() {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
  return locale;
}

locale_t UnicodeLocale() {
  static const locale_t locale = [] {
    locale_t made = newlocale(LC_ALL_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    return made ? made : ClassicLocale();
  }();
  return locale;
}

}  // namespace lq::detail
