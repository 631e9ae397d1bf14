// Put before every file of a build with Clang, which calls strlen no constant expression: texts such as
// `constexpr QLatin1String name("…")` count with it.
#pragma once

#ifdef __cplusplus
#include <cstring>
#define strlen __builtin_strlen
#endif
