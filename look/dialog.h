#pragma once

class QDialog;
class QFileDialog;
class QMessageBox;

namespace look {

/// The dynamic property of a widget that is dimmed while a dialog blocks it: true.
constexpr const char* veiledProperty = "lookVeiled";

/// Makes a dialog a sheet: frameless, white, with a navy edge and round corners, in the middle of the veiled
/// widget that it belongs to, else of the window. While the dialog blocks its window, that widget is dimmed.
/// Call it before the dialog is shown.
void dress(QDialog* dialog);

/// The same for a message: title above the text, the sign of its severity, buttons for fingers.
void dress(QMessageBox* message);

/// The same for Qt's own file dialog: rows for fingers, icons of look/icons, buttons with words.
void dress(QFileDialog* files);

}  // namespace look
