#pragma once

#include <QDebug>
#include <QObject>
#include <QString>

namespace mendo {

/// Hears every finished log line of the process: the seam for traces, tests and a log view.
class LogHub : public QObject {
    Q_OBJECT
public:
    static LogHub* instance();
    /// Whether loggers write to the console (standard error). On by default.
    void setConsole(bool on);
    bool console() const;

signals:
    /// `level` is the letter of the tag ("S", "E", "W", "I", "d"); `text` has neither tag nor colour.
    void line(const QString& level, const QString& text);

private:
    LogHub() = default;
    bool console_ = true;
};

/// One log line for the console: tag, then the values streamed into it, separated by single spaces;
/// written when the object goes away.
class QLog {
public:
    /// `tag` is a template such as "[I|%1]"; %1 becomes the host clock's time as MM/dd hh:mm:ss.zzz.
    QLog(const QString& colour, const QString& tag, const QString& suffix);
    virtual ~QLog();
    QLog(const QLog&) = delete;
    QLog& operator=(const QLog&) = delete;

    template <typename T>
    QLog& operator<<(const T& item) {
        stream_ << item;
        return *this;
    }

protected:
    /// Text so far; a trailing separator is cut.
    QString text() const;
    QString taggedText() const;
    void finish(const QString& file);

private:
    QString colour_, tag_, suffix_, buffer_;
    QDebug stream_;
    bool finished_ = false;
};

/// The same, and to a file as well, when that can be opened (its folder is not made).
class QFLog : public QLog {
public:
    /// `file` is the path without the ending ("./log/lumo"), `ending` what follows the dot ("log").
    QFLog(const QString& colour, const QString& tag, const QString& suffix, const QString& file,
          const QString& ending);
    ~QFLog() override;

private:
    QString file_;
};

}  // namespace mendo
