#pragma once

#include <QLatin1String>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

namespace prog {

/// What a check looks at; its word stands before each finding.
enum class Rule {
    Type,
    Field,
    Pairing,
    Point,
    Speed,
    WeldSpeed,
    Zone,
    Arc,
    Circle,
    Reach,
    Set,
    Range,
    WeldEmpty,
    Standing,
    Port,
    Output,
    Input,
    Station,
    Drift,
};

/// "weld-speed".
[[nodiscard]] QLatin1String ruleWord(Rule rule);

enum class Severity {
    Error,    ///< a run is refused: what cannot be read, or would move or light wrongly
    Warning,  ///< a run goes on with what it reads instead
};

/// The document in which a finding's place is.
enum class Document { Project, Parameters, Ports, Stations, Scenario };

/// What exactly is wrong, with the arguments of its texts. Its row says the rule, the severity, the words and
/// the remedy. Lines among the arguments count from 1.
enum class Fault {
    NoStatement,  ///< an element of a program is no object
    TypeMissing,
    TypeIsNoText,
    TypeIsEmpty,
    TypeUnknown,  ///< the type

    NoRecord,        ///< an element of another list is no object
    FieldMissing,    ///< the names of the fields, joined by ", "
    FieldKind,       ///< the name, the kind it should have (FieldKind), what is found
    FieldUnknown,    ///< the name
    FieldDuplicate,  ///< the name
    Negative,        ///< the name, the number
    EntryWrong,      ///< an entry of a scenario: what is wrong, in English
    ActionUnknown,   ///< the same of its action
    EntryInput,      ///< the same of its input
    PathUnknown,     ///< the path
    FileUnknown,     ///< the file
    Unreadable,      ///< why, in English

    OpenNotClosed,      ///< the lines on which the laser stays on
    OpenNotClosedHere,  ///< the line of the next start of welding, the lines on which the laser stays on
    CloseWithoutOpen,
    PairIncomplete,  ///< of a line that is switched off

    PointMissing,     ///< the point's name
    PointNotTaught,   ///< the point's name
    PointIncomplete,  ///< the point's name, what it lacks
    PointOtherAxes,   ///< the point's name, its joint angles, the robot's axes

    SpeedMissing,
    SpeedNotPositive,  ///< mm/s
    SpeedTooHigh,      ///< mm/s, the highest
    WeldSpeedMissing,
    WeldSpeedNotPositive,  ///< mm/s
    WeldSpeedTooHigh,      ///< mm/s, the highest

    ZoneNegative,   ///< mm
    ZoneEndsEarly,  ///< the zone in mm, the length that stays dark in mm

    ArcCoincident,
    ArcCollinear,
    CircleCoincident,
    CircleCollinear,

    OutOfReach,    ///< mm along the move
    JointLimit,    ///< mm along the move
    JointTooFast,  ///< the axis, °/s that the move asks for, °/s that it can

    NoSetChosen,
    NoSuchSet,   ///< the set from 1, the number of sets
    OutOfRange,  ///< the name, the value, the least, the most

    NothingWelded,  ///< the line of the stop of welding

    StandingDwell,  ///< ms
    StandingDelay,  ///< ms
    StandingInput,  ///< the input

    PortOutOfUse,       ///< the port's word, the line of the start of welding
    PortNotAssigned,    ///< the port's word
    PortNowhere,        ///< the port's word, what it is assigned to
    PortsShare,         ///< the words of two ports, what both are assigned to
    PortRows,           ///< the number of rows, the number of ports
    PortOfAnotherKind,  ///< the port's word, the kind it should have

    OutputOfEquipment,  ///< the output, the port's word
    OutputUnknown,      ///< the output
    OutputNotChosen,
    InputUnknown,  ///< the input
    InputNotChosen,

    StationEdge,  ///< the word
    StationNoInput,
    StationSameInput,  ///< the input, the other station's name
    StationNoProject,
    ProjectMissing,     ///< the file
    ProjectUnreadable,  ///< the file, why in English
    ProjectFaulty,      ///< the file, the number of errors

    CopyDiffers,  ///< the name, the statement's value, the set's
};

/// Something that is wrong, as a value. Words are put to it where a person reads them.
struct Finding {
    Fault fault{};
    Severity severity = Severity::Warning;
    Document document = Document::Project;
    int element = -1;  ///< position in the document's list; -1: the document as a whole
    int line = -1;     ///< of the statement, from 0; -1: none
    QString path;      ///< dotted, of the field in the element
    QVariantList arguments;

    [[nodiscard]] Rule rule() const;
    [[nodiscard]] bool isError() const { return severity == Severity::Error; }
};

using Findings = std::vector<Finding>;

/// The severity that a fault has in a line that runs; a line that is switched off only warns of most faults.
[[nodiscard]] Severity severityOf(Fault fault);
/// Whether it stays an error in a line that is switched off: what cannot be read.
[[nodiscard]] bool isUnreadable(Fault fault);

/// Puts another language's words to an English pattern or word.
using Translate = std::function<QString(const char* english)>;

/// What is wrong, in English, without the place and without a full stop: `the zone is negative (-2 mm)`.
[[nodiscard]] QString englishText(const Finding& finding);
/// The sentence with %1, %2 … for the arguments as texts, English; the source of its translations (context
/// "Finding").
[[nodiscard]] const char* textPattern(const Finding& finding);
/// What to do about it, in the same way: "enter a speed above 0".
[[nodiscard]] const char* remedyPattern(const Finding& finding);
/// The arguments as texts, in the order of %1, %2 … `translate` is asked for the words among them, which are
/// of the same context; without it they are English.
[[nodiscard]] QStringList argumentTexts(const Finding& finding, const Translate& translate = {});
/// A pattern with the arguments in the places of its %1, %2 …
[[nodiscard]] QString filled(const QString& pattern, const QStringList& arguments);

/// All patterns and words that may be asked for, for a test of their translations.
[[nodiscard]] std::vector<const char*> findingWords();

}  // namespace prog
