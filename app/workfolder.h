#pragma once

#include <QString>

namespace app {

/// Makes a folder the working directory, in which packages keep projects and settings: `given`, else
/// `remembered`, else the default one, which is made where it is missing. A remembered folder that
/// cannot be entered is passed over and named in `lost`. False when none can be entered.
bool enterWorkFolder(const QString& given, const QString& remembered, QString* lost);

}  // namespace app
