#pragma once

#include <QStringList>
#include <QVector>

class QTextBlock;
class QTextDocument;
class QUrl;
class QWidget;

namespace app {

/// The handbook in the panel's language, among the panel's resources.
[[nodiscard]] QUrl handbookUrl();

/// The anchors of the English handbook's headings, in their order. The handbooks of the other languages have
/// the same headings in the same order, and the panel names a chapter by its English anchor in every
/// language.
[[nodiscard]] const QStringList& handbookAnchors();

/// The blocks of a document that are headings.
[[nodiscard]] QVector<QTextBlock> headingsOf(const QTextDocument& document);

/// The anchor of a heading in Markdown: "Inputs, outputs, delays" is "inputs-outputs-delays".
[[nodiscard]] QString anchorOf(const QString& heading);

/// The English anchor of the handbook's chapter about what the operator looks at: the open dialog, else the
/// page shown. `page` is the package's page; may be null.
[[nodiscard]] QString chapterOf(const QWidget* page);
/// All anchors that chapterOf() may give.
[[nodiscard]] QStringList chapters();

}  // namespace app
