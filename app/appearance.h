#pragma once

#include <QStringList>

class QLineEdit;
class QWidget;

namespace app {

/// Sets the language ("cn", "en", "ru"): the host's setting, which packages read, and the catalogues of the
/// panel and of Qt. Call it before the first window is made.
void installLanguage(const QString& language);
/// The language that was set.
[[nodiscard]] QString presentLanguage();

/// Sets style, palette and font of the application, independent of the desktop's. Call it before the first
/// window is made.
void installStyle();

/// Gives a widget of the panel's frame its style sheet, now and whenever the factor changes: files of
/// app/style, or all of them. Not for the panel's window: the pages in it have style sheets of their own.
void dress(QWidget* widget, const QStringList& parts = {});

/// Sets the factor of the frame (look/scale.h), with the application's font and the style sheets.
void setFrameFactor(double factor);

/// A button in the field that empties it. Qt's own one fades in by the wall clock, and its fade is never
/// deleted when the field goes meanwhile.
void addClearButton(QLineEdit* field);

}  // namespace app
