#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace kord {

/// Converts theme files to style sheets and applies them.
class ThemeManager {
public:
    /// A theme file is a JSON object of selectors with properties ("QPushButton": {"color": "#333"}). The
    /// selectors of the result are sorted. Empty when the file cannot be read.
    static QString genStyleSheet(const QString& jsonFile);
    /// Sets the sheet on the widget and on every descendant window, except those whose object name is
    /// listed.
    static void setRecursiveWidgetStyleSheet(QWidget* widget, const QString& sheet,
                                             const QStringList& exclusions);
};

}  // namespace kord
