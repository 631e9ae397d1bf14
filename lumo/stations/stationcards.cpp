#include "stations/stationcards.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/seam.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QEvent>
#include <QPainter>

#include <tuple>

namespace lumo {

namespace {

// Px at factor 1.
constexpr int wideHeight = 152;
constexpr int narrowHeight = 60;
constexpr int gap = 16;
constexpr int narrowGap = 8;
constexpr int padding = 16;
constexpr int iconSize = 22;
constexpr int beadHeight = 24;
constexpr int beadOut = 5;  ///< px that a bead has free at either end
constexpr int leastForThree = 760;
constexpr int cardCount = 3;

void setType(QPainter* painter, look::Size size, look::Weight weight, QRgb colour) {
    painter->setFont(look::font(size, weight));
    painter->setPen(QColor(colour));
}

/// At one side of a line, elided. Returns the px that it takes.
int write(QPainter* painter, const QRect& line, Qt::AlignmentFlag side, const QString& text) {
    const QString shown = painter->fontMetrics().elidedText(text, Qt::ElideMiddle, line.width());
    painter->drawText(line, side | Qt::AlignVCenter, shown);
    return painter->fontMetrics().horizontalAdvance(shown);
}

}  // namespace

bool StationCards::Card::operator==(const Card& other) const {
    const auto all = [](const Card& card) {
        return std::tie(card.title, card.icon, card.main, card.aside, card.left, card.right, card.share,
                        card.laserOn);
    };
    return all(*this) == all(other);
}

StationCards::StationCards(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void StationCards::show(const Running& running, const Waiting& waiting, const StationTally& tally) {
    const Card shown[] = {runningCard(running), waitingCard(waiting)};
    for (int i = 0; i < 2; ++i) {
        if (!(cards_[i] == shown[i])) {
            cards_[i] = shown[i];
            update(place(i));
        }
    }
    const auto all = [](const StationTally& one) {
        return std::tie(one.since, one.ended, one.stopped, one.refused);
    };
    if (all(tally_) != all(tally)) {
        tally_ = tally;
        update(place(2));
    }
}

StationCards::Card StationCards::runningCard(const Running& running) const {
    Card card;
    card.title = tr("当前运行");
    if (running.station.isEmpty()) {
        card.left = tr("没有运行");
        return card;
    }
    const SeamProgress& seam = running.seam;
    card.icon = QStringLiteral("play");
    card.colour = look::green;
    card.main = running.station;
    card.aside = running.project;
    card.share = seam.seams > 0 ? seam.share : -1;
    card.laserOn = running.laserOn;
    card.left = seam.seams > 0 ? tr("焊缝 %1 / %2，第 %3 行").arg(seam.seam).arg(seam.seams).arg(running.line)
                               : tr("第 %1 行").arg(running.line);
    card.right = running.elapsed;
    return card;
}

StationCards::Card StationCards::waitingCard(const Waiting& waiting) const {
    Card card;
    card.title = tr("等待");
    if (waiting.station.isEmpty()) {
        card.left = tr("没有等待的工位");
        return card;
    }
    card.icon = QStringLiteral("listening");
    card.colour = look::blue;
    card.main = waiting.station;
    card.aside = waiting.project;
    card.left = waiting.isHeld             ? tr("已等 %1，停止信号有效").arg(waiting.waited)
                : waiting.behind.isEmpty() ? tr("已等 %1").arg(waiting.waited)
                                           : tr("已等 %1，在 %2 之后").arg(waiting.waited, waiting.behind);
    card.right = waiting.more > 0 ? tr("另有 %1 个").arg(waiting.more) : QString();
    return card;
}

// --- Layout ---------------------------------------------------------------------------------------

bool StationCards::isNarrow() const {
    return width() < look::px(leastForThree);
}

QSize StationCards::sizeHint() const {
    const int all = isNarrow() ? cardCount * narrowHeight + (cardCount - 1) * narrowGap : wideHeight;
    return {width(), look::px(all)};
}

QRect StationCards::place(int card) const {
    if (isNarrow()) {
        return {0, card * look::px(narrowHeight + narrowGap), width(), look::px(narrowHeight)};
    }
    const int each = (width() - (cardCount - 1) * look::px(gap)) / cardCount;
    return {card * (each + look::px(gap)), 0, each, look::px(wideHeight)};
}

void StationCards::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    updateGeometry();
}

void StationCards::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        updateGeometry();
    }
}

// --- Painting -------------------------------------------------------------------------------------

void StationCards::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < cardCount; ++i) {
        const QRect card = place(i);
        const bool runs = i == 0 && !cards_[0].main.isEmpty();
        painter.setPen(QPen(QColor(runs ? look::line : look::rule), 1));
        painter.setBrush(QColor(runs ? look::white : look::panel));
        painter.drawRoundedRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
        const int aside = look::px(padding), above = look::px(isNarrow() ? 6 : 12);
        const QRect content = card.adjusted(aside, above, -aside, -above);
        if (i == 2) {
            paintTally(&painter, content);
        } else if (isNarrow()) {
            paintNarrow(&painter, content, cards_[i]);
        } else {
            paintCard(&painter, content, cards_[i]);
        }
    }
}

void StationCards::paintCard(QPainter* painter, const QRect& place, const Card& card) const {
    const int line = look::px(24);
    QRect row(place.left(), place.top(), place.width(), look::px(20));
    setType(painter, look::Size::Caption, look::Weight::Strong, look::ink2);
    write(painter, row, Qt::AlignLeft, card.title);
    row = QRect(place.left(), row.bottom() + look::px(8), place.width(), line);
    if (!card.icon.isEmpty()) {
        const int side = look::px(iconSize);
        painter->drawPixmap(row.left(), row.center().y() - side / 2,
                            look::picture(card.icon, side, card.colour));
        setType(painter, look::Size::Title, look::Weight::Strong, look::ink);
        const QRect name = row.adjusted(side + look::px(8), 0, 0, 0);
        const int taken = side + look::px(24) + write(painter, name, Qt::AlignLeft, card.main);
        setType(painter, look::Size::Text, look::Weight::Plain, look::ink2);
        write(painter, row.adjusted(taken, 0, 0, 0), Qt::AlignRight, card.aside);
        row.translate(0, line + look::px(8));
    }
    if (card.share >= 0) {
        const QRectF bead(row.left() - beadOut, row.top(), row.width() + 2 * beadOut, look::px(beadHeight));
        look::paintSeamBar(painter, bead, card.share, card.laserOn);
        row.translate(0, line + look::px(6));
    }
    setType(painter, look::Size::Text, look::Weight::Plain, look::ink2);
    const int right =
        card.right.isEmpty() ? 0 : write(painter, row, Qt::AlignRight, card.right) + look::px(8);
    write(painter, row.adjusted(0, 0, -right, 0), Qt::AlignLeft, card.left);
}

/// In two lines; the bead stands beside the station.
void StationCards::paintNarrow(QPainter* painter, const QRect& place, const Card& card) const {
    const int line = place.height() / 2;
    QRect row(place.left(), place.top(), place.width(), line);
    setType(painter, look::Size::Caption, look::Weight::Strong, look::ink2);
    const int title = write(painter, row, Qt::AlignLeft, card.title) + look::px(16);
    setType(painter, look::Size::Caption, look::Weight::Plain, look::ink2);
    const QString place2 = card.right.isEmpty() ? card.left : card.left + QStringLiteral(" · ") + card.right;
    write(painter, row.adjusted(title, 0, 0, 0), Qt::AlignRight, place2);
    row.translate(0, line);
    if (card.icon.isEmpty()) {
        return;
    }
    const int side = look::px(20);
    painter->drawPixmap(row.left(), row.center().y() - side / 2, look::picture(card.icon, side, card.colour));
    setType(painter, look::Size::Text, look::Weight::Strong, look::ink);
    row.setLeft(row.left() + side + look::px(8));
    row.setLeft(row.left() + write(painter, row, Qt::AlignLeft, card.main) + look::px(16));
    if (card.share >= 0) {
        look::paintSeamBar(painter, QRectF(row), card.share, card.laserOn);
    } else {
        setType(painter, look::Size::Caption, look::Weight::Plain, look::ink2);
        write(painter, row, Qt::AlignRight, card.aside);
    }
}

void StationCards::paintTally(QPainter* painter, const QRect& place) const {
    const std::pair<QString, int> counts[] = {
        {tr("运行完成"), tally_.ended}, {tr("中途停止"), tally_.stopped}, {tr("未能启动"), tally_.refused}};
    QRect row(place.left(), place.top(), place.width(), look::px(20));
    setType(painter, look::Size::Caption, look::Weight::Strong, look::ink2);
    write(painter, row, Qt::AlignLeft,
          tally_.since.isEmpty() ? tr("未监听") : tr("自 %1 起监听").arg(tally_.since));
    if (isNarrow()) {
        QRect cell(place.left(), row.bottom() + 1, place.width() / 3, place.bottom() - row.bottom());
        for (const auto& [name, count] : counts) {
            setType(painter, look::Size::Text, look::Weight::Strong, look::ink);
            const int figure = write(painter, cell, Qt::AlignLeft, QString::number(count)) + look::px(6);
            setType(painter, look::Size::Caption, look::Weight::Plain, look::ink2);
            write(painter, cell.adjusted(figure, 0, 0, 0), Qt::AlignLeft, name);
            cell.translate(cell.width(), 0);
        }
        return;
    }
    const int line = look::px(26);
    row = QRect(place.left(), row.bottom() + look::px(8), place.width(), line);
    for (const auto& [name, count] : counts) {
        setType(painter, look::Size::Text, look::Weight::Plain, look::ink2);
        write(painter, row, Qt::AlignLeft, name);
        setType(painter, look::Size::Text, look::Weight::Strong, look::ink);
        write(painter, row, Qt::AlignRight, QString::number(count));
        row.translate(0, line);
    }
}

}  // namespace lumo
