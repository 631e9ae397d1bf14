#pragma once

#include <QString>

class QLineEdit;

namespace app {

/// Sets the language ("cn", "en", "ru"): the host's setting, which packages read, and the catalogues of the
/// panel and of Qt. Call it before the first window is made.
void installLanguage(const QString& language);

/// Sets style, palette and font of the application, independent of the desktop's. Call it before the first
/// window is made.
void installStyle();

/// The style sheet of the application's own widgets. It must not be set on the panel's window, because
/// the pages in it have style sheets of their own.
QString frameStyleSheet();

/// A button in the field that empties it. Qt's own one fades in by the wall clock, and its fade is never
/// deleted when the field goes meanwhile.
void addClearButton(QLineEdit* field);

}  // namespace app
