#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <vector>

namespace workcell {

/// Writes a value change dump (IEEE 1364) with a time scale of 1 ms. Signals are declared first, then
/// the header is written, then changes in the order of time.
class VcdWriter {
public:
    enum class Kind { Wire, Integer, Real };

    bool open(const QString& file, QString* error);
    /// Writes to an open device that the caller owns.
    void setDevice(QIODevice* device) { out_ = device; }
    bool isOpen() const { return out_ != nullptr; }

    /// Declares a signal in a scope and returns its number. Characters that a dump's names cannot have become
    /// '_'.
    int declare(const QString& scope, const QString& name, Kind kind);
    /// A second name for a signal.
    void alias(const QString& scope, const QString& name, int signal);
    /// Writes the header and the values set so far, at time 0. Other signals start at 0.
    void begin();

    /// Equal values are not written again.
    void set(int signal, double value, qint64 atMs);
    /// Writes the time of the end. False, with the reason in `error`, when something could not be written.
    bool close(qint64 atMs, QString* error);

private:
    struct Signal {
        Kind kind;
        double value = 0;
    };
    struct Name {
        QString scope, name;
        int signal;
    };

    void declareNames();
    void writeValue(int signal);
    void writeTime(qint64 atMs);
    void write(const QByteArray& text);

    QFile file_;
    QIODevice* out_ = nullptr;
    std::vector<Signal> signals_;
    std::vector<Name> names_;
    qint64 timeMs_ = 0;
    bool begun_ = false;
    bool failed_ = false;
};

}  // namespace workcell
