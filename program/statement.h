#pragma once

#include "program/entryrange.h"
#include "program/geometry.h"
#include "program/record.h"
#include "program/signal.h"

#include <QLatin1String>
#include <QString>

#include <optional>
#include <vector>

namespace prog {

enum class StatementType { MoveJ, MoveL, MoveC, MoveCC, Open, Close, Param, SetDO, WaitDI, Delay, Unknown };

/// What a field of a record holds.
enum class FieldKind {
    Text,
    Flag,         ///< true or false
    Number,       ///< a number, not negative
    Entry,        ///< the same, or its digits as text, which dialogs store
    Whole,        ///< a whole number from 0
    Count,        ///< the same, or its digits as text
    Set,          ///< position of a parameter set
    State,        ///< "true", "false", or empty
    Coordinates,  ///< list of three numbers
    Joints,       ///< list of joint angles, one for each axis
    Map,          ///< the fields of a map have rows of their own, behind it
};

enum class Presence {
    Required,  ///< the schema refuses a record, or a map in it, without it; its absence is told as well
    Usual,     ///< read by runs; its absence is told
    Optional,  ///< read by runs; the default is what most want
    Shown,     ///< not read by runs: carried along, shown or edited
};

/// Which kind of signal reads a field.
enum class Source { Any, Io, Register };

/// A field of a record: the one place that says what it is.
struct FieldRow {
    QLatin1String path;  ///< dotted
    FieldKind kind;
    Presence presence;
    /// In new records (the templates), as JSON; null: they have no such field.
    const char* standard = nullptr;
    /// Unit and meaning, for the schema; null where the name says it.
    const char* meaning = nullptr;
    Source source = Source::Any;
    /// The figures that its page takes; null where it takes none.
    const EntryRange* range = nullptr;
};
using FieldRows = std::vector<FieldRow>;

/// A type of statements.
struct StatementRow {
    StatementType type;
    QLatin1String word;   ///< what a record's `type` holds
    const char* caption;  ///< the command's name in Chinese; translated in the context "QObject"
    bool moves;           ///< queues a motion
    bool switchesLaser;   ///< starts or stops welding
    bool hasDialog;       ///< is created and edited in a dialog of its own; moves have a page
    FieldRows fields;     ///< without those that all types have
};

/// Every type, in the order in which help and documents list them.
[[nodiscard]] const std::vector<StatementRow>& statementRows();
/// The row of a record's `type`; null for an unknown type.
[[nodiscard]] const StatementRow* statementRow(const QString& type);
/// The fields that records of all types have.
[[nodiscard]] const FieldRows& commonFields();
/// The fields of the tool set at the end of a project file.
[[nodiscard]] const FieldRows& toolsetFields();

/// The figures that the page or dialog of a type takes in a field; everything where the row has no range.
[[nodiscard]] EntryRange entryRange(const QString& type, QLatin1String field);

/// Whether a record's `type` names a motion. Unknown types that begin with "move" count as motions too:
/// they queue nothing and do not end a batch.
[[nodiscard]] bool isMove(const QString& type);
/// Whether runs execute a statement; a missing `execute` counts as true.
[[nodiscard]] bool isExecuted(const Record& statement);

/// A posture of the robot as it was taught.
struct TaughtPoint {
    /// A taught point of a statement, or the posture that the robot service reports.
    static TaughtPoint from(const Record& record);

    bool exists = false;  ///< the record has the field, taught or empty
    bool taught = false;  ///< it has three coordinates
    bool turned = false;  ///< it has three rotations
    Position trans;
    Orientation rot{};
    std::vector<double> joints;  ///< rad, one for each axis
};

/// One line of a program, read from its record with the defaults that runs use. Fields that the type does
/// not have keep theirs.
struct Statement {
    /// A node of the tree, or an object of a project file.
    static Statement from(const Record& record);

    StatementType type = StatementType::Unknown;
    QString word;          ///< `type` as it stands in the record
    bool moves = false;    ///< see isMove()
    bool executed = true;  ///< false: runs skip the line
    QString note;
    TaughtPoint point;   ///< the target; the point on the way of an arc, the second one of a circle
    TaughtPoint point1;  ///< the end of an arc, the third point of a circle
    double speedMmPerS = 0.0;
    std::optional<double> zoneMm;  ///< nothing: the controller's own
    double weldSpeedMmPerS = 0.0;  ///< of the moves in the weld that it starts
    int set = 0;                   ///< position of the parameter set
    int delayMs = 0;
    Signal signal;
    bool value = false;        ///< what the output is set to, or the state that is waited for
    QString tool, workObject;  ///< names, when the point was taught
};

}  // namespace prog
