#include "app/events/eventstore.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QVariant>

namespace app {

namespace {

const QString driver = QStringLiteral("QSQLITE");
constexpr int careEvery = 500;  // events
// Results of SQLite.
constexpr QLatin1String corrupt("11");
constexpr QLatin1String noDatabase("26");
constexpr QLatin1String busy("5");
constexpr int toldAfter = 3;  // tries of a database that is locked

const QString columns = QStringLiteral("id, at, kind, origin, project, line, detail, argument");

qint64 beginOf(const QDate& day) {
    return day.startOfDay().toMSecsSinceEpoch();
}

Event eventOf(const QSqlQuery& row) {
    Event event;
    int column = 0;
    event.id = row.value(column++).toLongLong();
    event.at = QDateTime::fromMSecsSinceEpoch(row.value(column++).toLongLong());
    event.kind = kindFrom(row.value(column++).toString(), Event::Kind::Panel);
    event.origin = originFrom(row.value(column++).toString());
    event.project = row.value(column++).toString();
    event.line = row.value(column++).toInt();
    event.detail = row.value(column++).toString();
    event.argument = row.value(column++).toString();
    return event;
}

}  // namespace

bool EventFilter::matches(const Event& event) const {
    return (!kind || *kind == event.kind) && (!day.isValid() || day == event.at.date()) &&
           (text.isEmpty() || searchText(event).contains(text, Qt::CaseInsensitive));
}

EventStore::EventStore(const QString& file, QObject* parent)
    : QObject(parent),
      file_(file),
      connection_(QStringLiteral("events %1").arg(reinterpret_cast<quintptr>(this), 0, 16)) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &EventStore::flush);
}

EventStore::~EventStore() {
    quiet_ = false;
    flush();
    close();
}

QString EventStore::defaultFile() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("events.sqlite"));
}

void EventStore::add(const Event& event) {
    waiting_.append(event);
    if (waiting_.size() > mostWaiting) {
        waiting_.removeFirst();
    }
    if (!timer_.isActive()) {
        timer_.start(delayMs);
    }
    emit added();
}

// --- The database ---------------------------------------------------------------------------------

/// The file may have been deleted since it was opened.
bool EventStore::open() {
    if (isOpen_ && QFileInfo::exists(file_)) {
        return true;
    }
    close();
    if (!QSqlDatabase::isDriverAvailable(driver)) {
        return fail(tr("缺少 SQLite 驱动"), {});
    }
    QDir().mkpath(QFileInfo(file_).absolutePath());
    QSqlDatabase database = QSqlDatabase::addDatabase(driver, connection_);
    database.setDatabaseName(file_);
    database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=0"));
    isOpen_ = true;
    if (!database.open()) {
        return fail(database.lastError().databaseText(), database.lastError().nativeErrorCode());
    }
    return prepareTables();
}

/// Commits without waiting for the disk: with a write-ahead journal the database stays whole, and a loss of
/// power costs the last events at most.
bool EventStore::prepareTables() {
    return run(QStringLiteral("PRAGMA journal_mode = WAL")) &&
           run(QStringLiteral("PRAGMA synchronous = NORMAL")) &&
           run(QStringLiteral("PRAGMA wal_autocheckpoint = 0")) &&
           run(QStringLiteral(
               "CREATE TABLE IF NOT EXISTS events (id INTEGER PRIMARY KEY AUTOINCREMENT, "
               "at INTEGER NOT NULL, kind TEXT NOT NULL, origin TEXT NOT NULL, project TEXT "
               "NOT NULL, line INTEGER NOT NULL, detail TEXT NOT NULL, argument TEXT NOT NULL)"));
}

void EventStore::close() {
    if (isOpen_) {
        isOpen_ = false;
        QSqlDatabase::database(connection_, false).close();
        QSqlDatabase::removeDatabase(connection_);
    }
}

bool EventStore::run(const QString& statement) {
    QSqlQuery query(QSqlDatabase::database(connection_, false));
    if (query.exec(statement)) {
        return true;
    }
    const QSqlError error = query.lastError();
    query = QSqlQuery();  // before the database is closed
    return fail(error.databaseText(), error.nativeErrorCode());
}

/// A damaged file is put aside and the next try makes a new one; everything else may pass.
bool EventStore::fail(const QString& reason, const QString& code) {
    close();
    if (code == corrupt || code == noDatabase) {
        putAside();
    } else if (code != busy || ++locked_ >= toldAfter) {
        tellOnce(tr("事件日志无法写入：%1（%2）").arg(QDir::toNativeSeparators(file_), reason));
    }
    return false;
}

void EventStore::putAside() {
    QString kept = file_ + QStringLiteral(".damaged");
    for (int number = 2; QFileInfo::exists(kept); ++number) {
        kept = QStringLiteral("%1.damaged.%2").arg(file_).arg(number);
    }
    for (const QString& journal : {QStringLiteral("-wal"), QStringLiteral("-shm")}) {
        QFile::remove(file_ + journal);
    }
    if (QFile::rename(file_, kept)) {
        tellOnce(tr("事件日志已损坏，保存为 %1，并新建日志").arg(QDir::toNativeSeparators(kept)));
    } else {
        tellOnce(tr("事件日志已损坏：%1").arg(QDir::toNativeSeparators(file_)));
    }
}

void EventStore::tellOnce(const QString& text) {
    if (!told_.contains(text)) {
        told_.append(text);
        emit problem(text);
    }
}

// --- Writing --------------------------------------------------------------------------------------

/// A second try, because the first one may have put a damaged file aside.
bool EventStore::flush() {
    timer_.stop();
    if (waiting_.isEmpty() || write() || (!isOpen_ && write())) {
        return true;
    }
    timer_.start(retryMs);
    return false;
}

bool EventStore::write() {
    if (!open() || !run(QStringLiteral("BEGIN IMMEDIATE"))) {
        return false;
    }
    QSqlQuery query(QSqlDatabase::database(connection_, false));
    bool isWritten =
        query.prepare(QStringLiteral("INSERT INTO events (at, kind, origin, project, line, detail, "
                                     "argument) VALUES (?, ?, ?, ?, ?, ?, ?)"));
    for (auto event = waiting_.cbegin(); isWritten && event != waiting_.cend(); ++event) {
        isWritten = insert(&query, *event);
    }
    const QSqlError error = query.lastError();
    query = QSqlQuery();
    if (!isWritten) {
        return fail(error.databaseText(), error.nativeErrorCode());  // closing rolls back
    }
    if (!run(QStringLiteral("COMMIT"))) {
        return false;
    }
    writtenSinceCare_ += waiting_.size();
    waiting_.clear();
    locked_ = 0;
    dropOldest();
    return true;
}

bool EventStore::insert(QSqlQuery* query, const Event& event) {
    // A null text is NULL in the database.
    const auto text = [](const QString& value) { return value.isNull() ? QStringLiteral("") : value; };
    int column = 0;
    query->bindValue(column++, event.at.toMSecsSinceEpoch());
    query->bindValue(column++, wordOf(event.kind));
    query->bindValue(column++, text(wordOf(event.origin)));
    query->bindValue(column++, text(event.project));
    query->bindValue(column++, event.line);
    query->bindValue(column++, text(event.detail));
    query->bindValue(column++, text(event.argument));
    return query->exec();
}

/// Emptying the journal waits for the disk: not while the cell works.
void EventStore::dropOldest() {
    if (writtenSinceCare_ < careEvery || quiet_) {
        return;
    }
    writtenSinceCare_ = 0;
    run(QStringLiteral("DELETE FROM events WHERE id <= (SELECT max(id) FROM events) - %1").arg(mostEvents));
    if (isOpen_) {
        run(QStringLiteral("PRAGMA wal_checkpoint(PASSIVE)"));
    }
}

// --- Reading --------------------------------------------------------------------------------------

QVector<Event> EventStore::before(qint64 id, const EventFilter& filter, int count) {
    QVector<Event> events;
    if (!QFileInfo::exists(file_) || !open()) {
        return events;
    }
    QString condition = QStringLiteral("id < %1").arg(id);
    if (filter.kind) {
        condition += QStringLiteral(" AND kind = '%1'").arg(wordOf(*filter.kind));
    }
    if (filter.day.isValid()) {
        condition += QStringLiteral(" AND at >= %1 AND at < %2")
                         .arg(beginOf(filter.day))
                         .arg(beginOf(filter.day.addDays(1)));
    }
    QSqlQuery query(QSqlDatabase::database(connection_, false));
    query.setForwardOnly(true);
    if (query.exec(QStringLiteral("SELECT %1 FROM events WHERE %2 ORDER BY id DESC LIMIT %3")
                       .arg(columns, condition)
                       .arg(count))) {
        while (query.next()) {
            events.append(eventOf(query));
        }
    }
    const QSqlError error = query.lastError();
    query = QSqlQuery();
    if (error.isValid()) {
        fail(error.databaseText(), error.nativeErrorCode());
    }
    return events;
}

}  // namespace app
