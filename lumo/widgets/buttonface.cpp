#include "widgets/buttonface.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QPainter>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace lumo {

namespace {

constexpr int smallestPx = 10;  // at factor 1
constexpr int besideIcon = 8;   // between icon and caption
constexpr int belowIcon = 2;

QFont sized(QFont font, int pixelSize) {
    font.setPixelSize(pixelSize);
    return font;
}

int widthOf(const QFont& font, const QStringList& lines) {
    int width = 0;
    for (const QString& line : lines) {
        width = std::max(width, look::textWidth(font, line));
    }
    return width;
}

/// Soft hyphens in a caption mark where words may be divided.
QString withoutHyphens(QString text) {
    return text.remove(QChar(QChar::SoftHyphen));
}

QStringList brokenAt(const QString& text, int at) {
    QString first = text.left(at);
    if (first.endsWith(QChar(QChar::SoftHyphen))) {
        first += QLatin1Char('-');
    }
    return {withoutHyphens(first).trimmed(), withoutHyphens(text.mid(at)).trimmed()};
}

/// The two lines that need the least width; one line if the text cannot be broken.
QStringList broken(const QString& text, const QFont& font) {
    QStringList best{withoutHyphens(text)};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    for (int at = finder.toNextBoundary(); at > 0 && at < text.size(); at = finder.toNextBoundary()) {
        const QStringList lines = brokenAt(text, at);
        if (widthOf(font, lines) < widthOf(font, best)) {
            best = lines;
        }
    }
    return best;
}

}  // namespace

QSize ButtonFace::sizeOfText(const Setting& setting) const {
    const QFont type = sized(font, setting.pixelSize);
    QSize size(widthOf(type, setting.lines), setting.lines.size() * QFontMetrics(type).height());
    if (!second.isEmpty()) {
        const QFont small = sized(font, std::min(setting.pixelSize, look::sizePx(look::Size::Caption)));
        size = {std::max(size.width(), look::textWidth(small, second)),
                size.height() + QFontMetrics(small).height()};
    }
    return size;
}

QSize ButtonFace::sizeOf(const Setting& setting) const {
    const QSize words = sizeOfText(setting);
    if (!setting.hasIcon) {
        return words;
    }
    if (place == Place::Over) {
        return {std::max(words.width(), iconPx), iconPx + look::px(belowIcon) + words.height()};
    }
    return {iconPx + look::px(besideIcon) + words.width(), std::max(iconPx, words.height())};
}

/// The better ones first.
QList<ButtonFace::Setting> ButtonFace::choices(int pixelSize) const {
    const QStringList one{withoutHyphens(text)};
    const QStringList two = broken(text, sized(font, pixelSize));
    QList<Setting> all;
    for (const bool hasIcon : {true, false}) {
        if (hasIcon && icon.isNull()) {
            continue;
        }
        all.append({hasIcon, one, pixelSize});
        if (two.size() > 1 && second.isEmpty()) {
            all.append({hasIcon, two, pixelSize});
        }
    }
    return all;
}

ButtonFace::Setting ButtonFace::fit(const QSize& room) const {
    Setting last;
    for (int pixels = font.pixelSize(); pixels >= look::px(smallestPx); --pixels) {
        const QList<Setting> all = choices(pixels);
        for (const Setting& setting : all) {
            const QSize needed = sizeOf(setting);
            if (needed.width() <= room.width() && needed.height() <= room.height()) {
                return setting;
            }
        }
        last = all.last();
    }
    return last;
}

QSize ButtonFace::size() const {
    return sizeOf(choices(font.pixelSize()).first());
}

QSize ButtonFace::leastSize() const {
    return sizeOf(choices(font.pixelSize()).last());
}

void ButtonFace::paintText(QPainter* painter, const QRect& room, const Setting& setting) const {
    const Qt::Alignment align =
        Qt::AlignVCenter | (setting.hasIcon && place == Place::Before ? Qt::Alignment(Qt::AlignLeft)
                                                                      : Qt::Alignment(Qt::AlignHCenter));
    const QSize size = sizeOfText(setting);
    QRect line(room.left(), room.top() + (room.height() - size.height()) / 2, room.width(), 0);
    painter->setFont(sized(font, setting.pixelSize));
    line.setHeight(painter->fontMetrics().height());
    for (const QString& words : setting.lines) {
        painter->drawText(line, int(align), words);
        line.moveTop(line.bottom() + 1);
    }
    if (!second.isEmpty()) {
        QFont small = sized(font, std::min(setting.pixelSize, look::sizePx(look::Size::Caption)));
        small.setWeight(QFont::Normal);
        painter->setFont(small);
        line.setHeight(painter->fontMetrics().height());
        painter->drawText(line, int(align), second);
    }
}

void ButtonFace::paint(QPainter* painter, const QRect& room, const QAbstractButton* button) const {
    const Setting setting = fit(room.size());
    const QSize size = sizeOf(setting);
    const int centred = (room.width() - size.width()) / 2;
    const int left = room.left() + (leftPx < 0 || !setting.hasIcon ? centred : std::min(leftPx, centred));
    QRect words(room.left(), room.top() + (room.height() - size.height()) / 2, room.width(), size.height());
    if (setting.hasIcon) {
        const QPoint at = place == Place::Over ? QPoint(room.center().x() - iconPx / 2 + 1, words.top())
                                               : QPoint(left, room.top() + (room.height() - iconPx) / 2);
        icon.paint(painter, QRect(at, QSize(iconPx, iconPx)), Qt::AlignCenter,
                   button->isEnabled() && !isPale ? QIcon::Normal : QIcon::Disabled,
                   button->isChecked() ? QIcon::On : QIcon::Off);
        if (place == Place::Over) {
            words.setTop(at.y() + iconPx + look::px(belowIcon));
        } else {
            words.setLeft(at.x() + iconPx + look::px(besideIcon));
        }
    }
    paintText(painter, words, setting);
}

}  // namespace lumo
