// The narrow locale record as the library's own code reads it.
#pragma once

#include "lqtools/localisation/LqLocaleInformation.h"

namespace lq::detail {

const LqLocaleInformation<LqString>& LocaleInformation();

}  // namespace lq::detail
