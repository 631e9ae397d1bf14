#pragma once

#include <QString>

namespace app {

/// Style, colours and font of the application, whatever the desktop's are. Before the first window.
void installLook();

/// The style sheet of what the application adds around the pages. Pages have their own, so it is not set
/// on the panel's window.
QString frameStyle();

}  // namespace app
