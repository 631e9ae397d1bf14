#pragma once

#include <QString>

class QWidget;

namespace app {

/// The handbook's file among the panel's resources.
extern const char* const handbookUrl;

/// The anchor of a heading in Markdown: "Inputs, outputs, delays" is "inputs-outputs-delays".
[[nodiscard]] QString anchorOf(const QString& heading);

/// The anchor of the handbook's chapter about what the operator looks at: the open dialog, else the page
/// shown. `page` is the package's page; may be null.
[[nodiscard]] QString chapterOf(const QWidget* page);
/// All anchors that chapterOf() may give.
[[nodiscard]] QStringList chapters();

}  // namespace app
