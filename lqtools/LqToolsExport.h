// LQTOOLS_API marks what the library exports. Everything else stays hidden inside the shared
// object; a static build (LQTOOLS_STATIC) exports nothing and needs no marks.
#pragma once

#if defined(LQTOOLS_STATIC)
#define LQTOOLS_API
#else
#define LQTOOLS_API __attribute__((visibility("default")))
#endif
