#pragma once

namespace lumo {

/// Ends the event loops that Qt opens of its own accord: of context menus (scroll bars, spin boxes, the
/// file dialog), of drags, and of the warnings of a file dialog. Somebody who waits below one of them
/// could not go on before the operator has closed it.
void endLoopsOfQt();

}  // namespace lumo
