#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace run {
struct Options;
}

namespace run::stress {

/// What is tried on a prepared cell.
struct Trial {
    std::optional<QJsonArray> program;  ///< statements and tool set; none: the session's project
    QJsonArray settings;                ///< written before the start: {"path", "value"} each
    QJsonObject options;  ///< as the command line's, where they differ: mode, weld, handWeld, noWriteMulti,
                          ///< line, once
    QJsonArray scenario;
    int untilMs = 0;  ///< 0: as the session's options

    /// Sets the options that the trial names.
    void applyTo(Options* call) const;
    /// A trial as an object with the members of these names.
    static Trial from(const QJsonObject& object);
    [[nodiscard]] QJsonObject toJson() const;
};

/// How a trial ended.
struct Verdict {
    QString rule;     ///< the first rule that was broken; empty when none was
    QString text;     ///< what happened
    qint64 atMs = 0;  ///< when
    qint64 ms = 0;    ///< duration of the whole trial
    QString events;   ///< all events, a line each, with "!!!!" where a rule was broken; empty without one

    [[nodiscard]] bool isBroken() const { return !rule.isEmpty(); }
    /// Whether the same rule was broken in the same way; numbers may differ.
    [[nodiscard]] bool isLike(const Verdict& other) const;

    static Verdict from(const QByteArray& json);
    [[nodiscard]] QByteArray toJson() const;
};

}  // namespace run::stress
