#include "mendo/log.h"

#include "mendo/clock.h"

#include <QFile>
#include <QMetaMethod>

#include <fcntl.h>

#include <algorithm>
#include <cstdio>

namespace mendo {

namespace {

/// The letter in "[S|%1]".
QString levelOf(const QString& tag) {
    const int begin = tag.indexOf(QLatin1Char('[')) + 1;
    return tag.mid(begin, tag.indexOf(QLatin1Char('|'), begin) - begin);
}

/// Remembers for 100 ms that a log file cannot be opened, because trying it takes longer than the rest of
/// a line. Only after several failures in a row, so that a single line notices a new folder at once.
class MissingFile {
public:
    bool holds(const QString& file) const {
        constexpr qint64 restMs = 100;
        if (misses_ < enough || file != file_) {
            return false;
        }
        const qint64 age = Clock::current().elapsedMs() - sinceMs_;
        return age >= 0 && age < restMs;  // negative after another clock was installed
    }
    void note(const QString& file, bool opened) {
        misses_ = opened ? 0 : file == file_ ? std::min(misses_ + 1, enough) : 1;
        file_ = file;
        sinceMs_ = opened ? 0 : Clock::current().elapsedMs();
    }

private:
    static constexpr int enough = 20;
    QString file_;
    int misses_ = 0;  ///< in a row
    qint64 sinceMs_ = 0;
};

MissingFile& missingFile() {
    // Never destroyed: lines are logged until the process ends.
    static auto* missingFile = new MissingFile;
    return *missingFile;
}

/// open() instead of QFile::open(), which is slow when it fails.
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

bool LogHub::hasListeners() const {
    static const QMetaMethod signal = QMetaMethod::fromSignal(&LogHub::line);
    return isSignalConnected(signal);
}

QLog::QLog(const QString& colour, const QString& tag, const QString& suffix)
    : QLog(colour, tag, suffix, QString(), QString()) {}

QLog::QLog(const QString& colour, const QString& tag, const QString& suffix, const QString& file,
           const QString& ending)
    : colour_(colour), tag_(tag), suffix_(suffix), file_(file), ending_(ending) {
    const LogHub* const hub = LogHub::instance();
    const bool filed = !file.isEmpty() && !missingFile().holds(file);
    if (filed || hub->console() || hub->hasListeners()) {
        stream_.emplace(&buffer_);
        stream_->noquote();
    }
}

QString QLog::text() const {
    return buffer_.endsWith(QLatin1Char(' ')) ? buffer_.chopped(1) : buffer_;
}

QString QLog::taggedText() const {
    const QString time = Clock::current().now().toString(QStringLiteral("MM/dd hh:mm:ss.zzz"));
    return QString(tag_).replace(QLatin1String("%1"), time) + QLatin1Char(' ') + text() + suffix_;
}

QLog::~QLog() {
    if (!stream_) {
        return;
    }
    LogHub* const hub = LogHub::instance();
    QFile sink;
    bool filed = false;
    if (!file_.isEmpty() && !missingFile().holds(file_)) {
        filed = openToAppend(&sink, file_ + QLatin1Char('.') + ending_);
        missingFile().note(file_, filed);
    }
    if (hub->console() || filed) {  // formatting the time is slow
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
    if (hub->hasListeners()) {
        emit hub->line(levelOf(tag_), text());
    }
}

QFLog::QFLog(const QString& colour, const QString& tag, const QString& suffix, const QString& file,
             const QString& ending)
    : QLog(colour, tag, suffix, file, ending) {}

}  // namespace mendo
