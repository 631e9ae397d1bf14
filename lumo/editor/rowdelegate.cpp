#include "editor/rowdelegate.h"

#include "editor/programcheck.h"
#include "editor/programtable.h"
#include "widgets/severitymark.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace {

constexpr int air = 6;
constexpr QRgb markerColour = qRgb(0, 255, 0);
constexpr int markerPointSize = 15;
constexpr int markEdge = 18;
constexpr int besideMark = 2;
/// Sizes that are kept for a column.
constexpr int mostShapes = 2000;

bool isDigit(QChar letter) {
    return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
}

/// The text with 0 for every digit: texts of one shape have the same size.
QString shapeOf(const QString& text) {
    QString shape = text;
    for (QChar& letter : shape) {
        if (isDigit(letter)) {
            letter = QLatin1Char('0');
        }
    }
    return shape;
}

bool areDigitsAlike(const QFont& font) {
    constexpr int digits = 10;
    QString pairs;
    for (int first = 0; first < digits; ++first) {
        for (int second = 0; second < digits; ++second) {
            pairs += QString::number(first) + QString::number(second);
        }
    }
    const QFontMetricsF metrics(font);
    const qreal width = metrics.horizontalAdvance(QLatin1Char('0'));
    for (int digit = 1; digit < digits; ++digit) {
        if (!qFuzzyCompare(metrics.horizontalAdvance(QString::number(digit)), width)) {
            return false;
        }
    }
    return qFuzzyCompare(metrics.horizontalAdvance(pairs), pairs.size() * width);
}

}  // namespace

RowDelegate::Known& RowDelegate::known(const QStyleOptionViewItem& option, int column) const {
    Known& known = columns_[column];
    if (known.width != option.rect.width() || known.font != option.font) {
        known.font = option.font;
        known.width = option.rect.width();
        known.digitsAreAlike = areDigitsAlike(option.font);
        known.sizes.clear();
    }
    return known;
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    const QString marker = index.column() == ProgramTable::MarkerColumn ? index.data().toString() : QString();
    if (!marker.isEmpty()) {
        paintMarker(painter, option, marker);
        return;
    }
    QStyledItemDelegate::paint(painter, option, index);
    if (check_ && index.column() == ProgramTable::DetailColumn && check_->isUntaught(index.row())) {
        paintUntaught(painter, option);
    }
    const auto severity =
        check_ && index.column() == ProgramTable::LineColumn ? check_->worstAt(index.row()) : std::nullopt;
    if (severity) {
        QRect mark(0, 0, markEdge, markEdge);
        mark.moveCenter(option.rect.center());
        mark.moveRight(option.rect.right() - besideMark);
        const int room = mark.left() - option.rect.left() - 2 * besideMark;
        if (option.fontMetrics.horizontalAdvance(index.data().toString()) > room) {
            mark.moveTop(option.rect.top() + besideMark);  // above a number of many digits
        }
        lumo::paintMark(painter, mark, *severity);
    }
}

/// At the upper right, where the lines of a text that has no figures end early.
void RowDelegate::paintUntaught(QPainter* painter, const QStyleOptionViewItem& option) {
    constexpr QRgb colour = qRgb(0xC5, 0x22, 0x1B);
    const QRect room = option.rect.adjusted(air, air, -air, -air);
    const QString text = QStringLiteral("▲ ") + tr("未示教");
    painter->save();
    QFont font = option.font;
    font.setBold(true);
    painter->setFont(font);
    const QSize size = QFontMetrics(font).size(Qt::TextSingleLine, text) + QSize(air, 0);
    const QRect place = QStyle::alignedRect(option.direction, Qt::AlignTop | Qt::AlignRight, size, room);
    painter->fillRect(place, option.palette.base());
    painter->setPen(QColor(colour));
    painter->drawText(place, Qt::AlignCenter, text);
    painter->restore();
}

void RowDelegate::paintMarker(QPainter* painter, const QStyleOptionViewItem& option,
                              const QString& marker) const {
    painter->save();
    painter->fillRect(option.rect, QColor(markerColour));
    QFont font = option.font;
    font.setPointSize(markerPointSize);
    painter->setFont(font);
    painter->setPen(Qt::black);
    painter->drawText(option.rect, Qt::AlignCenter, marker);
    painter->restore();
}

bool RowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                            const QModelIndex& index) {
    const QString text = check_ && event->type() == QEvent::ToolTip ? check_->textAt(index.row()) : QString();
    if (text.isEmpty()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    QToolTip::showText(event->globalPos(), text, view);
    return true;
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int column = index.column();
    if (column != ProgramTable::DetailColumn && column != ProgramTable::NoteColumn) {
        return {0, 0};
    }
    Known& texts = known(option, column);
    const QString text = index.data().toString();
    const QString shape = texts.digitsAreAlike ? shapeOf(text) : text;
    const auto kept = texts.sizes.constFind(shape);
    if (kept != texts.sizes.constEnd()) {
        return *kept;
    }
    const QSize size = QStyledItemDelegate::sizeHint(option, index) + QSize(0, air);
    if (texts.sizes.size() >= mostShapes) {
        texts.sizes.clear();
    }
    texts.sizes.insert(shape, size);
    return size;
}
