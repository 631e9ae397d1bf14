#pragma once

#include "flight/record.h"
#include "runner/replay/script.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

namespace run::replay {

/// Where the package decides otherwise than in the recording.
struct Difference {
    qint64 ms = 0;          ///< since the start of the first run, in the replay
    int line = 0;           ///< of the program, from 1
    QString recorded;       ///< empty: the recording has nothing more
    QString now;            ///< empty: the package does nothing more
    qint64 recordedMs = 0;  ///< time of the recorded act
};

/// Compares what the package does, as a recorder hears it, with the recording, one after the other.
class Comparison : public QObject, public flight::Sink {
    Q_OBJECT
public:
    /// `toleranceMs`: how much earlier or later something may be done.
    Comparison(const Script* script, qint64 toleranceMs, QObject* parent = nullptr);

    /// The replay begins now.
    void begin();
    /// Ends the comparison.
    void end();
    /// Commands and writes that were equal so far.
    [[nodiscard]] std::size_t matched() const { return next_; }
    [[nodiscard]] const std::optional<Difference>& difference() const { return difference_; }
    /// The clock of the recording.
    [[nodiscard]] qint64 nowMs() const;

    // flight::Sink
    quint64 append(const flight::Record& record) override;
    qint64 position() const override { return 0; }
    qint64 capacity() const override { return 0; }

signals:
    /// The package has done what was recorded next.
    void advanced();
    /// It has not; nothing is compared any more.
    void differs();

private:
    void differ(const flight::Record* now);
    void awaitNext();

    const Script* script_;
    qint64 toleranceMs_;
    qint64 clockOffsetMs_ = 0;
    std::size_t next_ = 0;  ///< position of the output that is expected
    bool isOver_ = true;
    QTimer missing_;
    std::optional<Difference> difference_;
};

}  // namespace run::replay
