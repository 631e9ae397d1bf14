#pragma once

class QAbstractScrollArea;
class QWidget;

namespace look {

/// The dynamic property of a scroll area that keeps flicks away from it; a bool.
constexpr const char* noFlickProperty = "noFlick";

/// Lets a finger or the mouse drag and flick what a scroll area shows. A tap, a press that stays for a
/// moment and its drag (as to select lines), and the scroll bars work as before. Lists and tables scroll by
/// the pixel. Does nothing for headers and for text that is edited, where a drag selects.
void letFlick(QAbstractScrollArea* area);

/// Does it for every scroll area in `root` and in its dialogs, also those that come later, when they are
/// first shown. For the life of `root`.
void letFlickIn(QWidget* root);

}  // namespace look
