#pragma once

#include "json/jsonwriter.h"

#include <QFile>
#include <QString>

#include <functional>

namespace run {

using mendo::JsonWriter;

struct Options;

/// Writes a trace: a JSON object on each line, the time first.
class Trace {
public:
    /// Opens the file; "-" is standard output. False, with the reason in `error`, when it cannot be written.
    /// Without an open file, lines are dropped.
    bool open(const QString& file, QString* error);
    bool isOpen() const { return out_.isOpen(); }
    /// The clock for the time of a line, ms.
    void setClock(std::function<qint64()> clock) { clock_ = std::move(clock); }

    /// Starts a line: add keys and values, then call end().
    JsonWriter& begin(const char* kind);
    /// The line that was started.
    JsonWriter& line() { return line_; }
    void end();

    /// Writes the buffer and closes the file. False, with the reason in `error`, when
    /// something could not be written.
    bool close(QString* error);

private:
    QFile out_;
    JsonWriter line_;
    std::function<qint64()> clock_;
    bool failed_ = false;
};

/// Writes the first line of a trace: the options, and the settings as the package has read them.
void writeBeginLine(Trace& trace, const Options& options, int statements);

}  // namespace run
