#pragma once

#include <QDebug>
#include <QObject>
#include <QString>

#include <optional>

namespace mendo {

/// Reports every log line of the process, for traces, tests and a log view.
class LogHub : public QObject {
    Q_OBJECT
public:
    static LogHub* instance();
    /// Whether loggers write to the console (standard error). On by default.
    void setConsole(bool on);
    bool console() const;
    /// Whether `line` is connected.
    bool hasListeners() const;

signals:
    /// `level` is the letter of the tag ("S", "E", "W", "I", "d"); `text` is without tag and colour.
    void line(const QString& level, const QString& text);

private:
    LogHub() = default;
    bool console_ = true;
};

/// One log line for the console: the tag, then the streamed values, separated by spaces. The destructor
/// writes it. Without console, file or listener the values are not formatted.
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
    /// The text without a trailing separator.
    QString text() const;
    QString taggedText() const;

    QString colour_, tag_, suffix_, file_, ending_, buffer_;
    std::optional<QDebug> stream_;  ///< empty when the line is not needed
};

/// A log line for the console and a file. The destructor opens, appends and closes the file; it does not
/// create the folder. After 20 failures in a row it tries the file again only after 100 ms.
class QFLog : public QLog {
public:
    /// `file` is the path without the extension ("./log/lumo"), `ending` the extension ("log").
    QFLog(const QString& colour, const QString& tag, const QString& suffix, const QString& file,
          const QString& ending);
};

}  // namespace mendo
