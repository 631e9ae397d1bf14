// Included first in every file of a build with Clang, for which strlen is not a constant expression: needed
// for `constexpr QLatin1String name("…")`.
#pragma once

#ifdef __cplusplus
#include <cstring>
#define strlen __builtin_strlen
#endif
