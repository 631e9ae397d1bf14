#pragma once

#include <QProxyStyle>

namespace app {

/// Fusion with the look's icons, in message boxes and file dialogs, too, and its colours. What style sheets
/// do not reach shows the keyboard focus by a blue frame.
class LookStyle : public QProxyStyle {
    Q_OBJECT
public:
    LookStyle();

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    QPixmap standardPixmap(StandardPixmap icon, const QStyleOption* option,
                           const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    QPalette standardPalette() const override;
};

}  // namespace app
