#pragma once

#include <QtGlobal>

/// What the shared library shows to those who resolve names in it; everything else is hidden.
#define LUMO_EXPORT Q_DECL_EXPORT
