#include "app/look.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QStyle>
#include <QStyleFactory>

namespace app {

namespace {

constexpr int kFontPx = 14;

}  // namespace

void installLook() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("WenQuanYi Micro Hei")});
    font.setPixelSize(kFontPx);
    QApplication::setFont(font);
}

QString frameStyle() {
    QFile file(QStringLiteral(":/app/panel.qss"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace app
