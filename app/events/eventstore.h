#pragma once

#include "app/events/event.h"

#include <QObject>
#include <QTimer>
#include <QVector>

#include <optional>

class QSqlQuery;

namespace app {

/// What is looked for in the log.
struct EventFilter {
    std::optional<Event::Kind> kind;
    QDate day;     ///< invalid: all
    QString text;  ///< part of searchText(), in any case; empty: all

    [[nodiscard]] bool matches(const Event& event) const;
};

/// The event log, an SQLite database. Nothing of it holds the panel up: events are collected and written
/// together some seconds later, in one transaction; a locked database is tried again. Events that cannot be
/// written stay in memory, the newest mostWaiting. A damaged file is kept beside a new one. Each trouble is
/// told once.
class EventStore : public QObject {
    Q_OBJECT
public:
    static constexpr int mostEvents = 100000;
    static constexpr int mostWaiting = 2000;
    static constexpr int delayMs = 2000;
    static constexpr int retryMs = 10000;

    /// `file` is opened with the first writing or reading. Folder and file are made if missing.
    explicit EventStore(const QString& file, QObject* parent = nullptr);
    /// Writes what is left.
    ~EventStore() override;
    /// The one in the user's data folder.
    static QString defaultFile();

    void add(const Event& event);
    /// Writes what waits; false when that is not possible now.
    bool flush();
    /// While the cell works, nothing waits for the disk.
    void setQuiet(bool quiet) { quiet_ = quiet; }

    /// Those that wait, oldest first.
    [[nodiscard]] const QVector<Event>& waiting() const { return waiting_; }
    /// At most `count` events before an id, newest first; of them those of the filter's kind and day. Empty
    /// where the log ends and when it cannot be read.
    [[nodiscard]] QVector<Event> before(qint64 id, const EventFilter& filter, int count);

signals:
    void added();
    /// Something is wrong with the database: a text for the operator.
    void problem(const QString& text);

private:
    bool open();
    bool prepareTables();
    void close();
    bool run(const QString& statement);
    bool write();
    bool insert(QSqlQuery* query, const Event& event);
    void dropOldest();
    bool fail(const QString& reason, const QString& code);
    void putAside();
    void tellOnce(const QString& text);

    QString file_;
    QString connection_;
    bool isOpen_ = false;
    bool quiet_ = false;
    QVector<Event> waiting_;
    QTimer timer_;
    int writtenSinceCare_ = 0;  ///< since the oldest were dropped and the journal was emptied
    int locked_ = 0;            ///< tries that found the database locked by another program
    QStringList told_;
};

}  // namespace app
