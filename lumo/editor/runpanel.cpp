#include "editor/runpanel.h"

#include "editor/rowsummary.h"
#include "editor/statementtext.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/seam.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace lumo {

namespace {

constexpr int lookMs = 100;

// At factor 1.
constexpr int margin = 16;
constexpr int titleHeight = 40;
constexpr int figureHeight = 40;
constexpr int beadHeight = 28;
constexpr int valueHeight = 44;
constexpr int headHeight = 40;
constexpr int seamHeight = 36;
constexpr int iconSize = 20;

constexpr int leftMiddle = Qt::AlignLeft | Qt::AlignVCenter;
constexpr int rightMiddle = Qt::AlignRight | Qt::AlignVCenter;

bool sameShown(const RunView& a, const RunView& b) {
    const auto tenths = [](double value) { return std::lround(value * 10); };
    const auto sameSeams = [](const RunView::Row& x, const RunView::Row& y) {
        return x.from == y.from && x.to == y.to && x.lengthMm == y.lengthMm && x.isWelded == y.isWelded;
    };
    return a.runs == b.runs && a.isDry == b.isDry && a.line == b.line && a.type == b.type &&
           a.seam == b.seam && tenths(a.alongMm) == tenths(b.alongMm) && a.isLit == b.isLit &&
           a.laserOn == b.laserOn && a.speedMmPerS == b.speedMmPerS &&
           tenths(a.powerPercent) == tenths(b.powerPercent) &&
           tenths(a.dutyPercent) == tenths(b.dutyPercent) && a.gas == b.gas && a.wire == b.wire &&
           tenths(a.wirePercent) == tenths(b.wirePercent) &&
           std::equal(a.seams.begin(), a.seams.end(), b.seams.begin(), b.seams.end(), sameSeams);
}

/// Draws a figure and, to the right, what belongs to it: small and in two lines where the row is too narrow.
void drawFigure(QPainter* painter, const QRect& row, const QString& value, const QString& after) {
    painter->setFont(look::font(look::Size::Figure, look::Weight::Strong));
    painter->setPen(QColor(look::ink));
    painter->drawText(row, leftMiddle, value);
    QRect rest = row;
    rest.setLeft(row.left() + painter->fontMetrics().horizontalAdvance(value + QLatin1Char(' ')));
    painter->setFont(look::font(look::Size::Text));
    if (painter->fontMetrics().horizontalAdvance(after) > rest.width()) {
        painter->setFont(look::font(look::Size::Caption));
    }
    painter->setPen(QColor(look::ink2));
    painter->drawText(rest, leftMiddle | Qt::TextWordWrap, after);
}

/// The first of these fonts in which a text fits, else the last.
QFont fitting(const QString& text, int room, std::initializer_list<QFont> fonts) {
    for (const QFont& font : fonts) {
        if (QFontMetrics(font).horizontalAdvance(text) <= room) {
            return font;
        }
    }
    return *(fonts.end() - 1);
}

}  // namespace

RunPanel::RunPanel(QWidget* parent) : QWidget(parent), run_(new RunFollower(this)) {
    setObjectName(QStringLiteral("runPanel"));
    look_.setInterval(lookMs);
    connect(&look_, &QTimer::timeout, this, &RunPanel::refresh);
    connect(run_, &RunFollower::changed, this, [this] {
        if (isVisible()) {
            watch();
            refresh();
        }
    });
}

void RunPanel::watch() {
    if (isVisible() && m(prog::key::executeState)->getString() != prog::word::idle) {
        if (!look_.isActive()) {
            look_.start();
        }
    } else {
        look_.stop();
    }
}

void RunPanel::refresh() {
    const RunView now = run_->view();
    if (!sameShown(view_, now)) {
        const bool onlyCameOn = [this, &now] {
            RunView before = view_;
            before.alongMm = now.alongMm;
            return sameShown(before, now);
        }();
        view_ = now;
        const int top = look::px(titleHeight);
        onlyCameOn ? update(0, top, width(), look::px(figureHeight + beadHeight)) : update();
    }
}

void RunPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    watch();
    refresh();
}

void RunPanel::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    look_.stop();
}

QRect RunPanel::band(int top, int height) const {
    return QRect(0, top, width(), height).adjusted(look::px(margin), 0, -look::px(margin), 0);
}

/// The seam is left out where the line's word needs its room: its row below carries the laser's sign.
int RunPanel::paintTitle(QPainter* painter, int top) const {
    QRect row = band(top, look::px(titleHeight));
    const int between = look::px(8);
    const QFont title = look::font(look::Size::Title, look::Weight::Strong);
    if (view_.line >= 0) {
        painter->setFont(title);
        painter->setPen(QColor(look::ink));
        const QString number = QString::number(view_.line + 1);
        painter->drawText(row, leftMiddle, number);
        const int side = look::px(iconSize);
        row.setLeft(row.left() + painter->fontMetrics().horizontalAdvance(number) + between);
        painter->drawPixmap(row.left(), row.center().y() - side / 2,
                            look::picture(statementIcon(view_.type), side));
        row.setLeft(row.left() + side + between);
        const QString word = type2cn(view_.type);
        painter->setFont(
            fitting(word, row.width(), {title, look::font(look::Size::Text, look::Weight::Strong)}));
        painter->drawText(row, leftMiddle, word);
        row.setLeft(row.left() + painter->fontMetrics().horizontalAdvance(word) + between);
    }
    if (view_.seam >= 0) {
        const QString seam = tr("焊缝 %1 / %2").arg(view_.seam + 1).arg(view_.seams.size());
        painter->setFont(
            fitting(seam, row.width(), {look::font(look::Size::Text), look::font(look::Size::Caption)}));
        painter->setPen(QColor(look::ink2));
        if (painter->fontMetrics().horizontalAdvance(seam) <= row.width()) {
            painter->drawText(row, rightMiddle, seam);
        }
    }
    return top + look::px(titleHeight);
}

int RunPanel::paintProgress(QPainter* painter, int top) const {
    const QRect figure = band(top, look::px(figureHeight));
    const QRect bead = band(figure.bottom() + 1, look::px(beadHeight));
    if (view_.seam < 0) {
        painter->setFont(look::font(look::Size::Text));
        painter->setPen(QColor(look::ink2));
        painter->drawText(figure, leftMiddle,
                          view_.seams.isEmpty() ? tr("程序没有焊缝") : tr("焊缝已全部走完"));
        return bead.bottom() + 1;
    }
    const double whole = view_.seams[view_.seam].lengthMm;
    const bool passes = view_.runs && !view_.isLit && view_.alongMm > 0.0;
    const QString after = passes ? tr(" / %1 mm，不出光") : tr(" / %1 mm 已焊");
    drawFigure(painter, figure, look::figure(view_.alongMm, 1), after.arg(look::figure(whole, 1)).trimmed());
    const double share = whole > 0.0 ? view_.alongMm / whole : 0.0;
    // The ends of the channel stand under the edges of the texts.
    const int wider = bead.height() / 2 - look::px(8);
    look::paintSeamBar(painter, bead.adjusted(-wider, 0, wider, 0), share, view_.laserOn);
    return bead.bottom() + 1;
}

QVector<RunPanel::ValueRow> RunPanel::values() const {
    const QString percent = QStringLiteral(" %");
    const QString on = tr("开"), off = tr("关");
    return {{tr("速度"), look::figure(view_.speedMmPerS, 1), tr(" mm/s")},
            {tr("激光功率"), look::figure(view_.powerPercent, 0), percent},
            {tr("激光占空比"), look::figure(view_.dutyPercent, 0), percent},
            {tr("保护气"), view_.gas ? on : off, QString()},
            {tr("送丝速度"), view_.wire ? look::figure(view_.wirePercent, 0) : off,
             view_.wire ? percent : QString()}};
}

int RunPanel::paintValues(QPainter* painter, int top) const {
    const int high = look::px(valueHeight);
    const QFont text = look::font(look::Size::Text);
    const QFont strong = look::font(look::Size::Text, look::Weight::Strong);
    top += look::px(8);
    const QVector<ValueRow> rows = values();
    for (const ValueRow& value : rows) {
        QRect row = band(top, high);
        painter->fillRect(row.left(), top, row.width(), 1, QColor(look::rule));
        painter->setFont(text);
        painter->setPen(QColor(look::ink2));
        painter->drawText(row, leftMiddle, value.caption);
        painter->setPen(QColor(look::ink3));
        painter->drawText(row, rightMiddle, value.unit);
        row.setRight(row.right() - painter->fontMetrics().horizontalAdvance(value.unit));
        painter->setFont(strong);
        painter->setPen(QColor(look::ink));
        painter->drawText(row, rightMiddle, value.value);
        top += high;
    }
    painter->fillRect(band(top, 1), QColor(look::rule));
    return top;
}

void RunPanel::paintSeamRow(QPainter* painter, const QRect& row, int seam) const {
    const RunView::Row& shown = view_.seams[seam];
    const int side = look::px(iconSize), between = look::px(8);
    const bool isNow = seam == view_.seam && view_.alongMm > 0.0;
    const QString length = tr("%1 mm").arg(look::figure(isNow ? view_.alongMm : shown.lengthMm, 1));
    painter->setFont(look::font(look::Size::Text));
    painter->setPen(QColor(look::ink3));
    painter->drawText(row, leftMiddle, QString::number(seam + 1));
    painter->setPen(QColor(look::ink));
    const QFontMetrics metrics = painter->fontMetrics();
    QRect room = row.adjusted(0, 0, -side - between, 0);
    painter->drawText(room, rightMiddle, length);
    const int digits = QString::number(view_.seams.size()).size();
    room.adjust(digits * metrics.horizontalAdvance(QLatin1Char('0')) + between, 0,
                -metrics.horizontalAdvance(length) - between, 0);
    const QString lines = tr("第 %1 至 %2 行").arg(shown.from).arg(shown.to);
    if (metrics.horizontalAdvance(lines) > room.width()) {
        painter->setFont(look::font(look::Size::Caption));
    }
    painter->drawText(room, leftMiddle, lines);
    const QRect sign(row.right() + 1 - side, row.center().y() - side / 2, side, side);
    if (shown.isWelded) {
        painter->drawPixmap(sign, look::picture(QStringLiteral("check"), side, look::green));
    } else if (isNow && view_.laserOn) {
        look::paintLaser(painter, QRectF(sign).center(), side * 0.7);
    }
    painter->fillRect(QRect(row.left(), row.bottom(), row.width(), 1), QColor(look::rule));
}

/// As many as fit: those around the seam under way.
void RunPanel::paintSeams(QPainter* painter, int top, int bottom) const {
    const int high = look::px(seamHeight);
    const int room = (bottom - top - look::px(headHeight)) / high;
    if (view_.seams.isEmpty() || room < 1) {
        return;
    }
    painter->setFont(look::font(look::Size::Caption, look::Weight::Strong));
    painter->setPen(QColor(look::ink2));
    painter->drawText(band(top, look::px(headHeight)), leftMiddle, tr("本件的焊缝"));
    top += look::px(headHeight);
    const int count = view_.seams.size();
    const int first = std::clamp(view_.seam + 2 - room, 0, std::max(0, count - room));
    for (int seam = first; seam < std::min(count, first + room); ++seam) {
        paintSeamRow(painter, band(top, high), seam);
        top += high;
    }
}

QString RunPanel::lockText() const {
    return view_.runs ? tr("程序正在运行，不能编辑") : tr("驱动已上电，不能编辑");
}

/// At the bottom; gives its top.
int RunPanel::paintLock(QPainter* painter) const {
    const int side = look::px(iconSize);
    painter->setFont(look::font(look::Size::Caption));
    painter->setPen(QColor(look::ink2));
    const QRect room = band(0, height()).adjusted(side + look::px(8), 0, 0, -look::px(8));
    const QRect text =
        painter->fontMetrics().boundingRect(room, Qt::AlignLeft | Qt::TextWordWrap, lockText());
    QRect place(room.left(), room.bottom() - text.height(), room.width(), text.height() + 1);
    painter->drawText(place, Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap, lockText());
    painter->drawPixmap(look::px(margin), place.center().y() - side / 2,
                        look::picture(QStringLiteral("lock"), side));
    return place.top();
}

void RunPanel::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setClipRect(event->rect());
    const int progress = look::px(titleHeight);
    const int below = progress + look::px(figureHeight + beadHeight);
    paintProgress(&painter, progress);
    if (event->rect().top() >= progress && event->rect().bottom() < below) {
        return;  // only the tool has moved
    }
    paintTitle(&painter, 0);
    const int seams = paintValues(&painter, below);
    paintSeams(&painter, seams, paintLock(&painter));
}

}  // namespace lumo
