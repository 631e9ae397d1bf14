#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace kord {

/// Turns theme files into style sheets and applies them.
class ThemeManager {
public:
    /// A theme file is a JSON object: selector to object of properties ("QPushButton": {"color": "#333"}).
    /// Selectors come out in the order of the file's keys sorted. A file that does not read gives "".
    static QString genStyleSheet(const QString& jsonFile);
    /// Sets the sheet on the widget and on every descendant that is a window of its own, except those
    /// whose object name is listed.
    static void setRecursiveWidgetStyleSheet(QWidget* widget, const QString& sheet,
                                             const QStringList& exclusions);
};

}  // namespace kord
