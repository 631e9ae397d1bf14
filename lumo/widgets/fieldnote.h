#pragma once

#include <QString>

class QLabel;
class QLineEdit;
class QWidget;

namespace lumo {

/// How a note stands to its field. Each has its own colour and, but for Plain, a triangle before the text.
enum class NoteTone {
    Plain,    ///< what may be entered
    Refused,  ///< what stands in the field is not taken
    Warned    ///< something is missing or doubtful
};

/// Writes a note of 14 px at a field. The style sheet knows the tone by the dynamic property `note`: "plain",
/// "refused", "warned".
void tellNote(QLabel* note, const QString& text, NoteTone tone);

/// Shows a label at the right end of a line, small and grey: its unit. The line's figure then stands
/// right-aligned before it. The label becomes a child of the line, which owns it.
void showUnit(QLineEdit* line, QLabel* unit);

/// Lets style sheets see a changed dynamic property of a widget.
void restyle(QWidget* widget);

}  // namespace lumo
