#include "app/scope/scopeexport.h"

#include "json/jsonwriter.h"

#include <QIODevice>

namespace app {

namespace {

using Change = SignalRecord::Change;

bool write(QIODevice* device, const QByteArray& text, QString* error) {
    if (device->write(text) == text.size()) {
        return true;
    }
    *error = device->errorString();
    return false;
}

QByteArray quoted(QString text) {
    return '"' + text.replace(QLatin1Char('"'), QLatin1String("\"\"")).toUtf8() + '"';
}

QByteArray header(const std::vector<ScopeRow>& rows) {
    QByteArray text = "time_s";
    for (const ScopeRow& row : rows) {
        text += ',' + quoted(row.label == row.name ? row.name : row.name + QLatin1Char(' ') + row.label);
    }
    return text + '\n';
}

QByteArray csvLine(qint64 ms, const std::vector<ScopeRow>& rows, const std::vector<double>& values) {
    constexpr double msPerS = 1000;
    QByteArray text = QByteArray::number(double(ms) / msPerS, 'f', 3);
    for (const ScopeRow& row : rows) {
        text += ',' + mendo::numberText(values[size_t(row.signal)]);
    }
    return text + '\n';
}

}  // namespace

bool writeVcd(QIODevice* device, const SignalRecorder& recorder, const TimeSpan& span, QString* error) {
    workcell::VcdWriter writer;
    writer.setDevice(device);
    const SignalRecord& record = recorder.record();
    recorder.cellSignals().beginDump(&writer, record.before(span.fromMs));
    const size_t end = record.firstAt(span.toMs + 1);
    for (size_t i = record.firstAt(span.fromMs); i < end; ++i) {
        const Change& change = record.changes()[i];
        writer.set(change.signal, change.value, change.ms - span.fromMs);
    }
    return writer.close(span.length(), error);
}

bool writeCsv(QIODevice* device, const SignalRecorder& recorder, const std::vector<ScopeRow>& rows,
              const TimeSpan& span, QString* error) {
    const SignalRecord& record = recorder.record();
    std::vector<double> values = record.before(span.fromMs);
    std::vector<bool> shown(values.size(), false);
    for (const ScopeRow& row : rows) {
        shown[size_t(row.signal)] = true;
    }
    if (!write(device, header(rows), error)) {
        return false;
    }
    // A line is written when the next time begins, because several signals may change in one millisecond.
    qint64 ms = span.fromMs;
    const size_t end = record.firstAt(span.toMs + 1);
    for (size_t i = record.firstAt(span.fromMs); i < end; ++i) {
        const Change& change = record.changes()[i];
        if (!shown[size_t(change.signal)]) {
            continue;
        }
        if (change.ms > ms && !write(device, csvLine(ms - span.fromMs, rows, values), error)) {
            return false;
        }
        ms = change.ms;
        values[size_t(change.signal)] = change.value;
    }
    return write(device, csvLine(ms - span.fromMs, rows, values), error);
}

}  // namespace app
