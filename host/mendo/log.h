#pragma once

#include <QDebug>
#include <QObject>
#include <QString>

#include <optional>

namespace mendo {

/// Hears every finished log line of the process: the seam for traces, tests and a log view.
class LogHub : public QObject {
    Q_OBJECT
public:
    static LogHub* instance();
    /// Whether loggers write to the console (standard error). On by default.
    void setConsole(bool on);
    bool console() const;
    /// Whether somebody listens.
    bool heard() const;

signals:
    /// `level` is the letter of the tag ("S", "E", "W", "I", "d"); `text` has neither tag nor colour.
    void line(const QString& level, const QString& text);

private:
    LogHub() = default;
    bool console_ = true;
};

/// One log line for the console: tag, then the values streamed into it, separated by single spaces;
/// written when the object goes away. Where nobody reads it, nothing is put together.
class QLog {
public:
    /// `tag` is a template such as "[I|%1]"; %1 becomes the host clock's time as MM/dd hh:mm:ss.zzz.
    QLog(const QString& colour, const QString& tag, const QString& suffix);
    ~QLog();
    QLog(const QLog&) = delete;
    QLog& operator=(const QLog&) = delete;

    template <typename T>
    QLog& operator<<(const T& item) {
        if (stream_) {
            *stream_ << item;
        }
        return *this;
    }

protected:
    QLog(const QString& colour, const QString& tag, const QString& suffix, const QString& file,
         const QString& ending);

private:
    /// Text so far; a trailing separator is cut.
    QString text() const;
    QString taggedText() const;

    QString colour_, tag_, suffix_, file_, ending_, buffer_;
    std::optional<QDebug> stream_;  ///< when somebody reads the line
};

/// The same, and to a file as well, when that can be opened (its folder is not made). The line is in the file
/// when the object is gone. After some lines that found no file the next ones come in 100 ms of the host's
/// clock.
class QFLog : public QLog {
public:
    /// `file` is the path without the ending ("./log/lumo"), `ending` what follows the dot ("log").
    QFLog(const QString& colour, const QString& tag, const QString& suffix, const QString& file,
          const QString& ending);
};

}  // namespace mendo
