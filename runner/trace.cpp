#include "runner/trace.h"

#include <cstdio>

namespace run {

bool Trace::open(const QString& file, QString* error) {
    out_.setFileName(file);
    const bool opened = file == QLatin1String("-") ? out_.open(stdout, QIODevice::WriteOnly)
                                                   : out_.open(QIODevice::WriteOnly);
    if (!opened) {
        *error = out_.errorString();
    }
    return opened;
}

JsonWriter& Trace::begin(const char* kind) {
    const qint64 now = clock_ ? clock_() : 0;
    return line_.beginObject()
        .key(QStringLiteral("t"))
        .integer(now)
        .key(QStringLiteral("kind"))
        .string(QLatin1String(kind));
}

void Trace::end() {
    QByteArray text = line_.endObject().take();
    if (!out_.isOpen()) {
        return;
    }
    text += '\n';
    failed_ |= out_.write(text) != text.size();
}

bool Trace::close(QString* error) {
    if (!out_.isOpen()) {
        return true;
    }
    failed_ |= !out_.flush();
    if (failed_) {
        *error = out_.errorString();
    }
    out_.close();
    return !failed_;
}

}  // namespace run
