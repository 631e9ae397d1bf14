#pragma once

#include <QImage>
#include <QStringList>

class QWidget;

namespace pictures {

/// What a person would object to in a window, one line a fault; empty when nothing is wrong. `picture` is the
/// window as it was painted, before anything was laid over it.
///
/// Looked for are widgets that cover one another, stand out of their parent or are smaller than their text,
/// texts whose contrast is below 4.5 : 1 (3 : 1 where disabled), and pure black, red and green where no
/// control has such a fixed colour. Sheets may cover the page.
QStringList faultsOf(const QWidget& window, const QImage& picture);

}  // namespace pictures
