#pragma once

#include <QImage>
#include <QStringList>

class QWidget;

namespace pictures {

/// The contrast of a widget's text where it is too low (below 4.5, disabled below 3), else 0. Its ground is
/// the colour that most of its pixels have, its text the colour that differs most from it.
double faintContrast(const QWidget& window, const QWidget& widget, const QImage& picture);

/// Says where the picture has pure black, red or green though no control there has it as its fixed colour.
QStringList pureColours(const QWidget& window, const QImage& picture);

}  // namespace pictures
