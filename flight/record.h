#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <functional>

namespace flight {

/// What recordings hold, as they say themselves; those without a number are 1. Since 2 they tell what
/// operators switch by hand at the device page and the port page.
constexpr int recordingFormat = 2;

/// One event of a recording.
struct Record {
    enum class Kind : quint8 {
        Opened = 1,  ///< a process begins to record
        Section,     ///< the content of a part of the state; key frames refer to it
        KeyFrame,    ///< the sections that are the whole state now
        Run,         ///< a start or once trigger is written; with the sections, where nothing runs yet
        Command,     ///< a call of the robot service
        Value,       ///< a node's value was set
        Announced,   ///< a node was announced with the value that it has
        Content,     ///< value and children of a node were replaced
        Inserted,    ///< a child came
        Removed,     ///< a child went
        Moved,       ///< a child changed its position
        Quitting,    ///< the process begins to end; what follows is its winding down
        Posture,     ///< the robot's posture; its body is binary, see posturerecord.h
    };
    /// Who wrote it.
    enum class By : quint8 {
        Cell,      ///< the robot's controller
        Executor,  ///< the package's executor
        Station,   ///< the package's station page
        Operator,  ///< any other page, or the program that operates the package
        Nobody,    ///< a write without a sender to the package's nodes
    };
    /// What had begun and not returned yet on the same event loop, when it was written.
    enum class Inside : quint8 {
        Loop,      ///< nothing
        Command,   ///< a command of the executor
        Executor,  ///< another write of the executor
        Cell,      ///< a write of the controller
        Act,       ///< a write of others, or a command that is not the executor's
    };
    /// The tree that a path leads through.
    enum class Tree : quint8 {
        Host,     ///< the host's tree
        Data,     ///< the data nodes of the robot service
        Results,  ///< its command nodes
        Pendant,  ///< the keys of the pendant
    };

    /// Whether the package's executor did it. It sends some commands without a sender.
    [[nodiscard]] bool isByExecutor() const {
        return by == By::Executor || (kind == Kind::Command && by == By::Nobody);
    }

    Kind kind = Kind::Value;
    By by = By::Nobody;
    Inside inside = Inside::Loop;
    Tree tree = Tree::Host;
    qint64 ms = 0;       ///< the host's steady clock
    qint64 wallMs = 0;   ///< since 1970, UTC
    QByteArray body;     ///< a JSON object in all but postures
    quint64 number = 0;  ///< from 1, counts all records that were ever written to the file

    /// The body as JSON; empty for a posture.
    [[nodiscard]] QJsonObject object() const;
    /// As it stands in the file, without its frame and number.
    [[nodiscard]] QByteArray encoded() const;
    /// False for bytes that are no record.
    static bool decode(const QByteArray& bytes, Record* record);
};

/// Takes records one after the other.
class Sink {
public:
    Sink() = default;
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    virtual ~Sink() = default;

    /// Returns the record's number.
    virtual quint64 append(const Record& record) = 0;
    /// Bytes taken so far.
    virtual qint64 position() const = 0;
    /// How many of them are kept.
    virtual qint64 capacity() const = 0;
};

}  // namespace flight
