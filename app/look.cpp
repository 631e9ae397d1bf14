#include "app/look.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QProxyStyle>
#include <QStyleFactory>

namespace app {

namespace {

constexpr int fontPx = 14;

/// Without the icons that some desktops put on the buttons of a dialog, tight against their captions.
class PlainDialogs : public QProxyStyle {
public:
    PlainDialogs() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

}  // namespace

void installLook() {
    QApplication::setStyle(new PlainDialogs);
    QApplication::setPalette(QApplication::style()->standardPalette());
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("WenQuanYi Micro Hei")});
    font.setPixelSize(fontPx);
    QApplication::setFont(font);
}

QString frameStyle() {
    QFile file(QStringLiteral(":/app/panel.qss"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace app
