#pragma once

#include <QString>

namespace app {

/// Makes `language` ("cn", "en", "ru") that of the process: the host's setting, which packages read,
/// the panel's own catalogue, and Qt's for its buttons and file dialogs. Before the first window.
void installLanguage(const QString& language);

}  // namespace app
