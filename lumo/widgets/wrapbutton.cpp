#include "widgets/wrapbutton.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTextBoundaryFinder>
#include <QVector>

#include <algorithm>

namespace {

constexpr int usualPixelSize = 14;
constexpr int smallestPixelSize = 9;

int widthOf(const QFontMetrics& metrics, const QStringList& lines) {
    int width = 0;
    for (const QString& line : lines) {
        width = std::max(width, metrics.horizontalAdvance(line));
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
QStringList broken(const QString& text, const QFontMetrics& metrics) {
    QStringList best{withoutHyphens(text)};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    for (int at = finder.toNextBoundary(); at > 0 && at < text.size(); at = finder.toNextBoundary()) {
        const QStringList lines = brokenAt(text, at);
        if (widthOf(metrics, lines) < widthOf(metrics, best)) {
            best = lines;
        }
    }
    return best;
}

}  // namespace

WrapButton::WrapButton(QWidget* parent) : QPushButton(parent) {
    QFont captionFont = font();
    captionFont.setPixelSize(usualPixelSize);
    setFont(captionFont);
}

WrapButton::Setting WrapButton::setting() const {
    QStyleOptionButton option;
    initStyleOption(&option);
    const QSize room = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).size();
    const QString whole = withoutHyphens(text());
    Setting result{{whole}, font()};
    for (int pixels = QFontInfo(font()).pixelSize(); pixels >= smallestPixelSize; --pixels) {
        result.font.setPixelSize(pixels);
        const QFontMetrics metrics(result.font);
        for (const QStringList& lines : {QStringList{whole}, broken(text(), metrics)}) {
            result.lines = lines;
            if (widthOf(metrics, lines) <= room.width() && lines.size() * metrics.height() <= room.height()) {
                return result;
            }
        }
    }
    return result;
}

QStringList WrapButton::shownLines() const {
    return setting().lines;
}

int WrapButton::shownPixelSize() const {
    return QFontInfo(setting().font).pixelSize();
}

QSize WrapButton::hint(const QStringList& lines) const {
    ensurePolished();
    QStyleOptionButton option;
    initStyleOption(&option);
    const QFontMetrics metrics(font());
    const QSize content(widthOf(metrics, lines), lines.size() * metrics.height());
    return style()->sizeFromContents(QStyle::CT_PushButton, &option, content, this);
}

QSize WrapButton::sizeHint() const {
    return hint({withoutHyphens(text())});
}

QSize WrapButton::minimumSizeHint() const {
    return hint(broken(text(), QFontMetrics(font())));
}

void WrapButton::paintEvent(QPaintEvent* /*event*/) {
    const Setting shown = setting();
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text = shown.lines.join(QLatin1Char('\n'));
    option.fontMetrics = QFontMetrics(shown.font);
    QStylePainter painter(this);
    painter.setFont(shown.font);
    painter.drawControl(QStyle::CE_PushButton, option);
}
