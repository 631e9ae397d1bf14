#pragma once

#include <QJsonObject>
#include <QString>

#include <vector>

namespace app {

/// A signal over the time of a run, as a picture of it needs it: the least and the greatest value in equal
/// spans of time. When there are too many, each two are joined, so that the memory is bounded.
class SignalBand {
public:
    enum class Kind { Emission, Power, Gas, Speed };
    struct Span {
        double least, most;
    };
    static constexpr int mostSpans = 800;

    SignalBand() = default;
    /// `value`: at time 0.
    SignalBand(Kind kind, double value);

    [[nodiscard]] Kind kind() const { return kind_; }
    /// The value changes, `ms` from the beginning; times never go back.
    void set(qint64 ms, double value);
    /// The value stays until then.
    void extend(qint64 ms) { set(ms, value_); }

    [[nodiscard]] const std::vector<Span>& spans() const { return spans_; }
    /// The length of a span.
    [[nodiscard]] qint64 spanMs() const { return spanMs_; }

    [[nodiscard]] QJsonObject json() const;
    [[nodiscard]] static SignalBand from(const QJsonObject& json);

private:
    Kind kind_ = Kind::Emission;
    double value_ = 0;
    qint64 spanMs_ = 5;
    std::vector<Span> spans_;
};

}  // namespace app
