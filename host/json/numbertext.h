#pragma once

#include <QByteArray>

namespace mendo {

/// The shortest text that reads back as the same number; "null" for what is no number.
QByteArray numberText(double number);

}  // namespace mendo
