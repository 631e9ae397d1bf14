#include "app/results/resultfigures.h"

#include "app/results/resulttext.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QColor>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

namespace app {

namespace {

enum FigurePlace { Welded, Time, LaserOn, Gas, Verdict, count };

/// Minutes and seconds with their tenths.
QString clock(double seconds) {
    constexpr int secondsPerMinute = 60;
    const int tenths = qRound(seconds * 10);
    const int minutes = tenths / (secondsPerMinute * 10);
    const int rest = tenths % (secondsPerMinute * 10);
    return QStringLiteral("%1:%2.%3").arg(minutes).arg(rest / 10, 2, 10, QLatin1Char('0')).arg(rest % 10);
}

QString span(const QString& text, int px, int weight, QRgb colour) {
    return QStringLiteral("<span style=\"font-size:%1px; font-weight:%2; color:%3\">%4</span>")
        .arg(QString::number(px),
             weight > QFont::DemiBold
                 ? QStringLiteral("700")
                 : (weight > QFont::Normal ? QStringLiteral("500") : QStringLiteral("400")),
             QColor(colour).name(), text.toHtmlEscaped());
}

}  // namespace

ResultFigures::ResultFigures(QWidget* parent)
    : QWidget(parent), grid_(new QGridLayout(this)), sign_(new QLabel) {
    setObjectName(QStringLiteral("resultFigures"));
    grid_->setContentsMargins(0, 0, 0, 0);
    const QString captions[] = {tr("已焊"), tr("时间"), tr("出光"), tr("气体"), tr("限值")};
    for (int i = 0; i < count; ++i) {
        auto* caption = new QLabel(captions[i]);
        caption->setProperty("caption", true);
        auto* value = new QLabel;
        value->setObjectName(QStringLiteral("lblFigure%1").arg(i));
        value->setTextFormat(Qt::RichText);
        figures_.append(Figure{caption, value});
    }
    figures_[Verdict].value->setObjectName(QStringLiteral("lblVerdict"));
    arrange(true);
}

void ResultFigures::arrange(bool isWide) {
    const int perRow = isWide ? int(count) : 3;
    for (int i = 0; i < count; ++i) {
        const int row = i / perRow * 2, column = i % perRow * 2;
        grid_->addWidget(figures_[i].caption, row, column, 1, 2);
        if (i == Verdict) {
            grid_->addWidget(sign_, row + 1, column);
            grid_->addWidget(figures_[i].value, row + 1, column + 1);
        } else {
            grid_->addWidget(figures_[i].value, row + 1, column, 1, 2);
        }
    }
    for (int column = 0; column < 2 * count; ++column) {
        grid_->setColumnStretch(column, column % 2 == 1 && column < 2 * perRow ? 1 : 0);
    }
    grid_->setHorizontalSpacing(look::px(8));
    grid_->setVerticalSpacing(0);
}

void ResultFigures::set(int figure, const QString& value, const QString& remark) {
    const QString large = span(value, look::sizePx(look::Size::Figure), look::strongWeight(), look::ink);
    const QString small = span(remark, look::sizePx(look::Size::Text), QFont::Normal, look::ink3);
    figures_[figure].value->setText(remark.isEmpty() ? large : large + QLatin1Char(' ') + small);
}

void ResultFigures::show(const RunResult* result) {
    setVisible(result != nullptr);
    if (!result) {
        return;
    }
    const workcell::RunRecord& record = result->record;
    const bool isFinished = record.reason == QLatin1String("finished");
    // Of a stopped run only the length that was programmed up to the stop is known.
    set(Welded, look::figure(result->weldedMm(), 1),
        isFinished ? tr("/ %1 mm").arg(look::figure(result->programmedMm(), 1)) : tr("mm"));
    set(Time, clock(record.seconds), {});
    set(LaserOn, look::figure(record.laserOnS, 1), tr("秒"));
    set(Gas, look::figure(record.gasS, 1), tr("秒"));
    showVerdict(*result);
}

void ResultFigures::showVerdict(const RunResult& result) {
    const bool bad = isBad(result), good = !bad && result.limits.has_value();
    const QRgb colour = bad ? look::amberInk : (good ? look::green : look::ink3);
    const QString sign = bad ? QStringLiteral("warn") : (good ? QStringLiteral("check") : QString());
    sign_->setPixmap(sign.isEmpty() ? QPixmap() : look::picture(sign, look::px(24), colour));
    sign_->setVisible(!sign.isEmpty());
    figures_[Verdict].value->setText(
        span(verdictText(result), look::sizePx(look::Size::Title), look::strongWeight(), colour));
    figures_[Verdict].value->setProperty("warning", bad);
}

}  // namespace app
