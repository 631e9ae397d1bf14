#include "mendo/log.h"

#include "mendo/clock.h"

#include <QFile>

#include <cstdio>

namespace mendo {

namespace {

/// The letter in "[S|%1]".
QString levelOf(const QString& tag) {
    const int begin = tag.indexOf(QLatin1Char('[')) + 1;
    return tag.mid(begin, tag.indexOf(QLatin1Char('|'), begin) - begin);
}

}  // namespace

LogHub* LogHub::instance() {
    // Never destroyed: lines are logged until the process ends.
    static auto* hub = new LogHub;
    return hub;
}

void LogHub::setConsole(bool on) {
    console_ = on;
}

bool LogHub::console() const {
    return console_;
}

QLog::QLog(const QString& colour, const QString& tag, const QString& suffix)
    : colour_(colour), tag_(tag), suffix_(suffix), stream_(&buffer_) {
    stream_.noquote();
}

QLog::~QLog() {
    finish(QString());
}

QString QLog::text() const {
    return buffer_.endsWith(QLatin1Char(' ')) ? buffer_.chopped(1) : buffer_;
}

QString QLog::taggedText() const {
    const QString time = Clock::current().now().toString(QStringLiteral("MM/dd hh:mm:ss.zzz"));
    return QString(tag_).replace(QLatin1String("%1"), time) + QLatin1Char(' ') + text() + suffix_;
}

void QLog::finish(const QString& file) {
    if (finished_) {
        return;
    }
    finished_ = true;
    const QString line = taggedText();
    if (LogHub::instance()->console()) {
        const QString reset = colour_.isEmpty() ? QString() : QStringLiteral("\033[0m");
        const QByteArray bytes = (colour_ + line + reset + QLatin1Char('\n')).toUtf8();
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
    }
    if (!file.isEmpty()) {
        QFile sink(file);
        if (sink.open(QIODevice::WriteOnly | QIODevice::Append)) {
            sink.write((line + QLatin1Char('\n')).toUtf8());
        }
    }
    emit LogHub::instance()->line(levelOf(tag_), text());
}

QFLog::QFLog(const QString& colour, const QString& tag, const QString& suffix, const QString& file,
             const QString& ending)
    : QLog(colour, tag, suffix), file_(file + QLatin1Char('.') + ending) {}

QFLog::~QFLog() {
    finish(file_);
}

}  // namespace mendo
