#include "devices/devicebutton.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"

#include <QFontMetrics>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>

namespace lumo {

namespace {

constexpr int iconSide = 24;
constexpr int iconGap = 10;
constexpr int sideMargin = 8;

int widthOf(const QFontMetrics& metrics, const QStringList& lines) {
    int width = 0;
    for (const QString& line : lines) {
        width = std::max(width, metrics.horizontalAdvance(line));
    }
    return width;
}

/// Broken at the space that leaves the shorter lines.
QStringList inTwo(const QString& text, const QFontMetrics& metrics) {
    QStringList best{text};
    for (int at = text.indexOf(QLatin1Char(' ')); at > 0; at = text.indexOf(QLatin1Char(' '), at + 1)) {
        const QStringList lines{text.left(at), text.mid(at + 1)};
        if (widthOf(metrics, lines) < widthOf(metrics, best)) {
            best = lines;
        }
    }
    return best;
}

/// What a laser's button and a pilot light's must have as their own style sheet. Frame and caption come from
/// the page's.
QString groundOf(DeviceButton::Face face) {
    switch (face) {
        case DeviceButton::Face::Locked:
            return QStringLiteral("background-color: darkgray;");
        case DeviceButton::Face::On:
            return QStringLiteral("background-color: red;");
        case DeviceButton::Face::Off:
            return QStringLiteral("background-color: black;");
        default:
            return QString();
    }
}

}  // namespace

DeviceButton::DeviceButton(QWidget* parent) : QPushButton(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QString DeviceButton::faceName() const {
    static const char* const names[] = {"plain", "armed", "outOfUse", "locked", "on", "off"};
    return QLatin1String(names[static_cast<int>(face_)]);
}

void DeviceButton::setFace(Face face) {
    if (face == face_) {
        return;
    }
    face_ = face;
    const QString ground = groundOf(face);
    if (ground != styleSheet()) {
        setStyleSheet(ground);
    } else if (testAttribute(Qt::WA_WState_Polished)) {
        style()->unpolish(this);
        style()->polish(this);
    }
    update();
}

void DeviceButton::setIconName(const QString& name) {
    if (iconName_ != name) {
        iconName_ = name;
        update();
    }
}

DeviceButton::Setting DeviceButton::setting() const {
    const int room = width() - 2 * look::px(sideMargin);
    Setting result{{text()}, font(), true};
    result.font.setWeight(look::strongWeight());
    for (const look::Size size : {look::Size::Title, look::Size::Text, look::Size::Caption}) {
        result.font.setPixelSize(look::sizePx(size));
        const QFontMetrics metrics(result.font);
        const QStringList broken = inTwo(text(), metrics);
        for (const bool hasIcon : {true, false}) {
            const int left = room - (hasIcon ? look::px(iconSide + iconGap) : 0);
            result.hasIcon = hasIcon;
            for (const QStringList& lines : {QStringList{text()}, broken}) {
                result.lines = lines;
                if (widthOf(metrics, lines) <= left) {
                    return result;
                }
            }
        }
    }
    return result;
}

QSize DeviceButton::sizeHint() const {
    constexpr int usualWidth = 180;
    constexpr int height = 64;
    return {look::px(usualWidth), look::px(height)};
}

QSize DeviceButton::minimumSizeHint() const {
    constexpr int leastWidth = 120;
    return {look::px(leastWidth), sizeHint().height()};
}

QRgb DeviceButton::colour() const {
    if (face_ == Face::On || face_ == Face::Off) {
        return look::white;
    }
    if (face_ == Face::OutOfUse) {
        return look::ink3;
    }
    return face_ == Face::Plain && !isEnabled() ? look::off : look::ink;
}

void DeviceButton::paintEvent(QPaintEvent* /*event*/) {
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_PushButton, option);
    if (hasFocus() && (face_ == Face::On || face_ == Face::Off)) {
        constexpr int inset = 6;
        painter.setPen(QPen(QColor(look::white), 2));
        painter.drawRect(rect().adjusted(inset, inset, -inset, -inset));
    }
    const Setting shown = setting();
    const QFontMetrics metrics(shown.font);
    const int icon = shown.hasIcon ? look::px(iconSide + iconGap) : 0;
    const int lines = widthOf(metrics, shown.lines);
    int x = (width() - icon - lines) / 2;
    if (shown.hasIcon) {
        const int side = look::px(iconSide);
        painter.drawPixmap(x, (height() - side) / 2, look::picture(iconName_, side, colour()));
        x += icon;
    }
    painter.setFont(shown.font);
    painter.setPen(QColor(colour()));
    const int middle = shown.hasIcon ? Qt::AlignLeft : Qt::AlignHCenter;
    painter.drawText(QRect(x, 0, lines, height()), middle | Qt::AlignVCenter | Qt::TextDontClip,
                     shown.lines.join(QLatin1Char('\n')));
}

}  // namespace lumo
