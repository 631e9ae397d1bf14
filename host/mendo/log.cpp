#include "mendo/log.h"

#include "mendo/clock.h"

#include <QFile>

#include <fcntl.h>

#include <cstdio>

namespace mendo {

namespace {

/// The letter in "[S|%1]".
QString levelOf(const QString& tag) {
    const int begin = tag.indexOf(QLatin1Char('[')) + 1;
    return tag.mid(begin, tag.indexOf(QLatin1Char('|'), begin) - begin);
}

/// Where there is no folder for logs this fails with every line: QFile's own way to say so costs as much as
/// the line.
bool openToAppend(QFile* sink, const QString& file) {
    constexpr int forAll = 0666;
    const int handle =
        ::open(QFile::encodeName(file).constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, forAll);
    return handle >= 0 && sink->open(handle, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle);
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
    LogHub* const hub = LogHub::instance();
    QFile sink;
    const bool filed = !file.isEmpty() && openToAppend(&sink, file);
    if (hub->console() || filed) {  // else nobody reads the time, which takes longer than the rest
        const QString line = taggedText();
        if (hub->console()) {
            const QString reset = colour_.isEmpty() ? QString() : QStringLiteral("\033[0m");
            const QByteArray bytes = (colour_ + line + reset + QLatin1Char('\n')).toUtf8();
            std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
        }
        if (filed) {
            sink.write((line + QLatin1Char('\n')).toUtf8());
        }
    }
    emit hub->line(levelOf(tag_), text());
}

QFLog::QFLog(const QString& colour, const QString& tag, const QString& suffix, const QString& file,
             const QString& ending)
    : QLog(colour, tag, suffix), file_(file + QLatin1Char('.') + ending) {}

QFLog::~QFLog() {
    finish(file_);
}

}  // namespace mendo
