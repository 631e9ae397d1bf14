#pragma once

#include <QDateTime>
#include <QString>

namespace app {

/// What happened, as the event log keeps it: without words of a language, but for names and messages of their
/// time.
struct Event {
    enum class Kind { Start, Finish, Pause, Stop, Fault, Error, Laser, Save, Load, Role, Panel };
    /// Who started it, or did it.
    enum class Origin { None, Hand, Step, Station };

    qint64 id = 0;  ///< in the order of the log; 0: not yet written
    QDateTime at;
    Kind kind = Kind::Start;
    Origin origin = Origin::None;
    QString project;   ///< its name
    int line = -1;     ///< of the program, from 0; -1: none
    QString detail;    ///< a word of detailText(); empty: none
    QString argument;  ///< of the detail: a name, a code or a message
};

/// All kinds, in the order of Event::Kind.
constexpr int eventKinds = int(Event::Kind::Panel) + 1;

/// The words by which the log stores them. An unknown word gives the last parameter.
QString wordOf(Event::Kind kind);
QString wordOf(Event::Origin origin);
Event::Kind kindFrom(const QString& word, Event::Kind otherwise);
Event::Origin originFrom(const QString& word);

// In the panel's language.
QString kindText(Event::Kind kind);
QString originText(Event::Origin origin);
QString detailText(const Event& event);
/// Date and time, "2026-11-26 10:05:26".
QString timeText(const Event& event);
/// All columns of the log in one text, for searching.
QString searchText(const Event& event);

/// The first line of a CSV file, and the line of an event: UTF-8, the same in each language.
QByteArray eventCsvHeader();
QByteArray eventCsvLine(const Event& event);

}  // namespace app
