#include "look/icon.h"

#include <QHash>
#include <QIconEngine>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <utility>

// Outside of any namespace: it names a function of the compiled resources.
static void initIcons() {
    Q_INIT_RESOURCE(look);
}

namespace look {

namespace {

/// The drawing's shape, as large as it was compiled in.
QImage shape(const QString& name) {
    static QHash<QString, QImage> kept;
    const auto known = kept.constFind(name);
    if (known != kept.constEnd()) {
        return *known;
    }
    static const bool ready = [] {
        initIcons();
        return true;
    }();
    Q_UNUSED(ready)
    const QImage drawn(QStringLiteral(":/look/%1.png").arg(name));
    return *kept.insert(name, drawn.convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

class Engine : public QIconEngine {
public:
    Engine(QString name, QRgb colour, QRgb checked)
        : name_(std::move(name)), colour_(colour), checked_(checked) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
        const int side = std::min(place.width(), place.height());
        const QPixmap drawn = picture(name_, side, colourOf(mode, state));
        const QRect centred(place.center() - QPoint((side - 1) / 2, (side - 1) / 2), QSize(side, side));
        painter->drawPixmap(centred, drawn);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return picture(name_, std::min(size.width(), size.height()), colourOf(mode, state));
    }
    QIconEngine* clone() const override { return new Engine(*this); }

private:
    QRgb colourOf(QIcon::Mode mode, QIcon::State state) const {
        if (mode == QIcon::Disabled) {
            return off;
        }
        return state == QIcon::On && checked_ != 0 ? checked_ : colour_;
    }

    QString name_;
    QRgb colour_;
    QRgb checked_;
};

}  // namespace

QIcon icon(const QString& name, QRgb colour, QRgb checked) {
    return QIcon(new Engine(name, colour, checked));
}

QPixmap picture(const QString& name, int size, QRgb colour) {
    static QHash<QString, QPixmap> kept;
    const QString key = QStringLiteral("%1 %2 %3").arg(name).arg(size).arg(colour, 0, 16);
    const auto known = kept.constFind(key);
    if (known != kept.constEnd()) {
        return *known;
    }
    const QImage whole = shape(name);
    if (whole.isNull() || size <= 0) {
        return {};
    }
    QImage drawn = whole.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&drawn);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(drawn.rect(), QColor(colour));
    painter.end();
    return *kept.insert(key, QPixmap::fromImage(drawn));
}

}  // namespace look
