#include "app/results/signalband.h"

#include <QJsonArray>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

/// In the order of SignalBand::Kind.
const QStringList& words() {
    static const QStringList all{QStringLiteral("emission"), QStringLiteral("power"), QStringLiteral("gas"),
                                 QStringLiteral("speed")};
    return all;
}

double shortened(double value) {
    constexpr double parts = 10;
    return std::round(value * parts) / parts;
}

}  // namespace

SignalBand::SignalBand(Kind kind, double value) : kind_(kind), value_(value), spans_{{value, value}} {}

void SignalBand::set(qint64 ms, double value) {
    while (ms / spanMs_ >= mostSpans) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < spans_.size(); i += 2) {
            const Span& other = spans_[std::min(i + 1, spans_.size() - 1)];
            spans_[kept++] = {std::min(spans_[i].least, other.least), std::max(spans_[i].most, other.most)};
        }
        spans_.resize(kept);
        spanMs_ *= 2;
    }
    spans_.resize(std::max(spans_.size(), std::size_t(ms / spanMs_) + 1), {value_, value_});
    spans_.back().least = std::min(spans_.back().least, value);
    spans_.back().most = std::max(spans_.back().most, value);
    value_ = value;
}

QJsonObject SignalBand::json() const {
    QJsonArray changes;  // position, least and greatest value where they differ from those before
    for (std::size_t i = 0; i < spans_.size(); ++i) {
        const Span& span = spans_[i];
        if (i == 0 || span.least != spans_[i - 1].least || span.most != spans_[i - 1].most) {
            changes.append(QJsonArray{int(i), shortened(span.least), shortened(span.most)});
        }
    }
    return {{QStringLiteral("signal"), words().at(int(kind_))},
            {QStringLiteral("span_ms"), double(spanMs_)},
            {QStringLiteral("spans"), int(spans_.size())},
            {QStringLiteral("changes"), changes}};
}

SignalBand SignalBand::from(const QJsonObject& json) {
    SignalBand band;
    band.kind_ = Kind(std::max(0, words().indexOf(json.value(QLatin1String("signal")).toString())));
    band.spanMs_ = std::max<qint64>(1, qint64(json.value(QLatin1String("span_ms")).toDouble()));
    const int count = std::clamp(json.value(QLatin1String("spans")).toInt(), 0, mostSpans);
    const QJsonArray changes = json.value(QLatin1String("changes")).toArray();
    for (const QJsonValue& value : changes) {
        const QJsonArray change = value.toArray();
        const auto before = std::size_t(std::clamp(change.at(0).toInt(), 0, count));
        const Span last = band.spans_.empty() ? Span{0, 0} : band.spans_.back();
        band.spans_.resize(std::max(before, band.spans_.size()), last);
        band.spans_.push_back({change.at(1).toDouble(), change.at(2).toDouble()});
    }
    band.spans_.resize(std::size_t(count), band.spans_.empty() ? Span{0, 0} : band.spans_.back());
    return band;
}

}  // namespace app
