#pragma once

#include <QString>

namespace look {

/// A style sheet with its placeholders filled in, at the factor in force:
/// "@ink" and the other names of look/tokens.h: a colour
/// "@48": a length of 48 px at factor 1, with its unit
/// "@caption", "@text", "@title", "@figure": a size of type, with its unit; "@strong": the weight of strong
/// type. A placeholder that is not known stays as it is, and the style sheet does not parse.
QString filled(const QString& sheet);

}  // namespace look
