#include "app/results/bandpicture.h"

#include "look/tokens.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace app {

/// Translation context of the texts.
struct BandPicture {
    Q_DECLARE_TR_FUNCTIONS(app::BandPicture)
};

namespace {

const QColor ink(look::steel);
const QColor hot(look::red);
const QColor rule(look::line);
const QColor gridColour(look::rule);

constexpr double stripHeight = 46, axisHeight = 22, gap = 8;
constexpr double nameWidth = 112, valueWidth = 56;
constexpr double msPerS = 1000;

QString nameOf(SignalBand::Kind kind) {
    switch (kind) {
        case SignalBand::Kind::Emission:
            return BandPicture::tr("出光");
        case SignalBand::Kind::Power:
            return BandPicture::tr("功率 %");
        case SignalBand::Kind::Gas:
            return BandPicture::tr("保护气");
        case SignalBand::Kind::Speed:
            return BandPicture::tr("速度 mm/s");
    }
    return {};
}

/// The value at the top of a strip.
double topOf(const SignalBand& band) {
    if (band.kind() == SignalBand::Kind::Power) {
        return 100;
    }
    double most = 1;
    for (const SignalBand::Span& span : band.spans()) {
        most = std::max(most, span.most);
    }
    return most;
}

/// A round step of the axis of time, 1, 2 or 5 times a power of ten, that gives at most ten.
double stepFor(double seconds) {
    constexpr double mostSteps = 10;
    const double least = std::max(seconds / mostSteps, 0.001);
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least) {
            return factor * power;
        }
    }
    return 10 * power;
}

void paintStrip(QPainter* painter, const QRectF& strip, const SignalBand& band, double seconds) {
    const double top = topOf(band);
    const auto y = [&](double value) { return strip.bottom() - value / top * (strip.height() - 4); };
    const auto x = [&](std::size_t span) {
        const double at = double(span) * double(band.spanMs()) / msPerS;
        return strip.left() + std::min(1.0, at / seconds) * strip.width();
    };
    QPolygonF upper, lower;
    for (std::size_t i = 0; i < band.spans().size(); ++i) {
        for (const std::size_t end : {i, i + 1}) {
            upper << QPointF(x(end), y(band.spans()[i].most));
            lower.prepend(QPointF(x(end), y(band.spans()[i].least)));
        }
    }
    const QColor colour = band.kind() == SignalBand::Kind::Emission ? hot : ink;
    QColor fill = colour;
    fill.setAlpha(0x50);
    painter->setPen(Qt::NoPen);
    painter->setBrush(fill);
    painter->drawPolygon(QPolygonF(upper) << QPointF(strip.bottomRight()) << QPointF(strip.bottomLeft()));
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(colour, 1));
    painter->drawPolyline(upper);
    painter->drawPolyline(lower);
}

}  // namespace

double bandPictureHeight(int bands) {
    return bands * (stripHeight + gap) + axisHeight;
}

void paintBands(QPainter* painter, const QRectF& area, const QVector<SignalBand>& bands) {
    double seconds = 0.001;
    for (const SignalBand& band : bands) {
        seconds = std::max(seconds, double(band.spans().size()) * double(band.spanMs()) / msPerS);
    }
    const double left = area.left() + nameWidth, width = area.width() - nameWidth - valueWidth;
    const double bottom = area.top() + bands.size() * (stripHeight + gap);
    const double step = stepFor(seconds);
    for (int i = 0; i * step <= seconds; ++i) {
        const double x = left + i * step / seconds * width;
        painter->setPen(QPen(gridColour, 1));
        painter->drawLine(QPointF(x, area.top()), QPointF(x, bottom));
        painter->setPen(ink);
        painter->drawText(QRectF(x - nameWidth / 2, bottom, nameWidth, axisHeight),
                          Qt::AlignHCenter | Qt::AlignTop, QStringLiteral("%1 s").arg(i * step));
    }
    double top = area.top();
    for (const SignalBand& band : bands) {
        const QRectF strip(left, top, width, stripHeight);
        painter->setPen(QPen(rule, 1));
        painter->drawLine(strip.bottomLeft(), strip.bottomRight());
        painter->setPen(ink);
        painter->drawText(QRectF(area.left(), top, nameWidth - gap, stripHeight),
                          Qt::AlignLeft | Qt::AlignVCenter, nameOf(band.kind()));
        painter->drawText(QRectF(strip.right() + gap, top, valueWidth - gap, stripHeight),
                          Qt::AlignLeft | Qt::AlignTop, QString::number(topOf(band), 'g', 4));
        paintStrip(painter, strip, band, seconds);
        top += stripHeight + gap;
    }
}

}  // namespace app
