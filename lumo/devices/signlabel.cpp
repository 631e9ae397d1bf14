#include "devices/signlabel.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/seam.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace lumo {

namespace {

struct SignRow {
    const char* name;  ///< in style sheets
    const char* icon;  ///< of look/icons; null: it is drawn here
    QRgb colour;
};

const SignRow& rowOf(Sign sign) {
    static const SignRow rows[] = {
        {"none", nullptr, 0},           {"on", nullptr, look::steel},
        {"off", nullptr, look::steel},  {"laser", nullptr, look::red},
        {"pilot", "pilot", look::ink},  {"armed", "unlock", look::amberInk},
        {"locked", "lock", look::ink2}, {"warning", "warn", look::amberInk},
        {"refused", "warn", look::red},
    };
    return rows[static_cast<int>(sign)];
}

void paintLamp(QPainter* painter, const QRectF& place, bool isOn) {
    constexpr qreal ringPx = 2;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(QColor(look::steel), ringPx));
    painter->setBrush(isOn ? QBrush(QColor(look::steel)) : QBrush(Qt::NoBrush));
    const qreal inset = place.width() / 8 + ringPx / 2;
    painter->drawEllipse(place.adjusted(inset, inset, -inset, -inset));
}

}  // namespace

SignLabel::SignLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QString SignLabel::signName() const {
    return QLatin1String(rowOf(sign_).name);
}

void SignLabel::show(Sign sign, const QString& text) {
    setText(text);
    setSign(sign);
}

void SignLabel::setSign(Sign sign) {
    if (sign == sign_) {
        return;
    }
    sign_ = sign;
    if (testAttribute(Qt::WA_WState_Polished)) {
        style()->unpolish(this);
        style()->polish(this);
    }
    makeRoom();
    update();
}

int SignLabel::signSize() const {
    return fontInfo().pixelSize() + look::px(3);
}

void SignLabel::makeRoom() {
    const int gap = look::px(6);
    setContentsMargins(sign_ == Sign::None ? 0 : signSize() + gap, 0, 0, 0);
    updateGeometry();
}

void SignLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        makeRoom();
    }
}

void SignLabel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (sign_ == Sign::None || text().isEmpty()) {
        return;
    }
    const int size = signSize();
    const QRect room = contentsRect();
    const int flags = static_cast<int>(alignment()) | (wordWrap() ? Qt::TextWordWrap : 0);
    const QRect text = fontMetrics().boundingRect(room, flags, this->text());
    const int line = fontMetrics().boundingRect(room, Qt::TextSingleLine, this->text()).height();
    const QRect place(text.left() - contentsMargins().left(), text.top() + (line - size) / 2, size, size);
    QPainter painter(this);
    const SignRow& row = rowOf(sign_);
    if (row.icon) {
        painter.drawPixmap(place.topLeft(), look::picture(QLatin1String(row.icon), size, row.colour));
    } else if (sign_ == Sign::Laser) {
        look::paintLaser(&painter, QRectF(place).center(), size);
    } else {
        paintLamp(&painter, place, sign_ == Sign::LampOn);
    }
}

}  // namespace lumo
