#pragma once

#include "json/jsonwriter.h"

#include <QFile>
#include <QString>

#include <functional>

namespace run {

using mendo::JsonWriter;

struct Options;

/// Writes trace lines: JSON Lines with the time in front.
class Trace {
public:
    /// Opens the file, "-" for standard output. False, with the reason in `error`, when it cannot be
    /// written. A trace that was never opened takes lines and writes none.
    bool open(const QString& file, QString* error);
    bool isOpen() const { return out_.isOpen(); }
    /// What tells the time of a line, ms.
    void setClock(std::function<qint64()> clock) { clock_ = std::move(clock); }

    /// Starts a line, to be filled with keys and values and ended by `end()`.
    JsonWriter& begin(const char* kind);
    /// The line that was started.
    JsonWriter& line() { return line_; }
    void end();

    /// Writes what is buffered; later lines are dropped. False, with the reason in `error`, when
    /// something could not be written.
    bool close(QString* error);

private:
    QFile out_;
    JsonWriter line_;
    std::function<qint64()> clock_;
    bool failed_ = false;
};

/// Writes the first line of a trace: what shapes the run, and the settings as the package has them.
void writeBeginLine(Trace& trace, const Options& options, int statements);

}  // namespace run
