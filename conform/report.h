#pragma once

#include "conform/session.h"

#include <QByteArray>
#include <QString>

namespace conform {

/// "pass     one-result       each motion of a batch has one result".
QString judgedText(const Judged& judged);
/// "34 kept, 1 broken, 2 skipped".
QString countText(const std::vector<Judged>& all);
/// A test suite with a case for each check.
QByteArray junitText(const QString& backend, const std::vector<Judged>& all);
bool isAnyBroken(const std::vector<Judged>& all);

}  // namespace conform
