#pragma once

#include <QString>

class QStackedWidget;

/// Installs compiled translation catalogues in the application.
class Translator {
public:
    /// A file that does not exist installs nothing and returns false. The newest catalogue of a
    /// package (same file name up to the last '_') replaces the one before it.
    bool installQMTranslator(const QString& path);
};

Translator* translator();

/// The panel's central stacked widget, the home of every page and the parent of message boxes.
/// Null until a panel has set one.
QStackedWidget* instantiatedCenterWidget();
void setInstantiatedCenterWidget(QStackedWidget* widget);

namespace gantu {

/// Loads a package's shared library, whose static registrations then enter its creators. The
/// library stays loaded. False, with the reason in `error`, when it cannot be loaded.
bool loadPackage(const QString& libraryFile, QString* error);

}  // namespace gantu
