#pragma once

namespace app {

/// Style, colours and font of the application, whatever the desktop's are. Before the first window.
void installLook();

}  // namespace app
