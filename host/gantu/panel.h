#pragma once

#include <QString>

class QStackedWidget;

/// Installs compiled translation catalogues in the application.
class Translator {
public:
    /// Installs a catalogue; it replaces an earlier one of the same package (same file name up to the
    /// last '_'). False when the file does not exist or cannot be loaded.
    bool installQMTranslator(const QString& path);
};

Translator* translator();

/// The panel's central widget, which holds all pages and is the parent of message boxes. Null until a
/// panel has set it.
QStackedWidget* instantiatedCenterWidget();
void setInstantiatedCenterWidget(QStackedWidget* widget);
