#include "program/finding.h"

#include "program/statement.h"
#include "program/words.h"

#include <QtGlobal>

#include <iterator>

namespace prog {

namespace {

/// A fault: the one place that says what it is.
struct Row {
    Fault fault;
    Rule rule;
    Severity severity;
    const char* text;
    const char* remedy;
};

#define TEXT(words) QT_TRANSLATE_NOOP("Finding", words)

constexpr Severity error = Severity::Error;
constexpr Severity warning = Severity::Warning;

constexpr Row rows[] = {
    {Fault::NoStatement, Rule::Type, error, TEXT("this is no statement"), TEXT("delete it")},
    {Fault::TypeMissing, Rule::Type, error, TEXT("the statement has no type"),
     TEXT("name its type, or delete it")},
    {Fault::TypeIsNoText, Rule::Type, error, TEXT("the statement's type is no text"),
     TEXT("name its type, or delete it")},
    {Fault::TypeIsEmpty, Rule::Type, error, TEXT("the statement's type is empty"),
     TEXT("name its type, or delete it")},
    {Fault::TypeUnknown, Rule::Type, error, TEXT("unknown statement type \"%1\""),
     TEXT("delete the line, or correct its type")},

    {Fault::NoRecord, Rule::Field, error, TEXT("this is no record"), TEXT("delete it")},
    {Fault::FieldMissing, Rule::Field, warning, TEXT("missing: %1"), TEXT("edit the line and confirm it")},
    {Fault::FieldKind, Rule::Field, error, TEXT("\"%1\" is %3, it should be %2"),
     TEXT("enter the value again")},
    {Fault::FieldUnknown, Rule::Field, warning, TEXT("unknown field \"%1\""),
     TEXT("delete the field, or correct its name")},
    {Fault::FieldDuplicate, Rule::Field, warning,
     TEXT("\"%1\" stands here more than once, the last one counts"), TEXT("delete all but one")},
    {Fault::Negative, Rule::Range, warning, TEXT("\"%1\" is negative (%2)"), TEXT("enter a value from 0")},
    {Fault::EntryWrong, Rule::Field, error, TEXT("%1"), TEXT("correct the entry")},
    {Fault::ActionUnknown, Rule::Type, error, TEXT("%1"), TEXT("correct the entry")},
    {Fault::EntryInput, Rule::Input, error, TEXT("%1"), TEXT("choose another input")},
    {Fault::PathUnknown, Rule::Field, warning, TEXT("the data tree has nothing at \"%1\""),
     TEXT("correct the path")},
    {Fault::FileUnknown, Rule::Field, warning, TEXT("there is no file %1"), TEXT("correct the name")},
    {Fault::Unreadable, Rule::Field, error, TEXT("%1"), TEXT("mend or replace the file")},

    {Fault::OpenNotClosed, Rule::Pairing, error,
     TEXT("the weld is not closed: the laser stays on in lines %1"), TEXT("add the stop of welding")},
    {Fault::OpenNotClosedHere, Rule::Pairing, error,
     TEXT("the weld is not closed before the next one begins in line %1: the laser stays on in lines %2"),
     TEXT("add the stop of welding")},
    {Fault::CloseWithoutOpen, Rule::Pairing, error, TEXT("no weld is open here"),
     TEXT("delete the stop of welding, or add its start")},
    {Fault::PairIncomplete, Rule::Pairing, warning, TEXT("the line is switched off and has no partner"),
     TEXT("switch it on, or delete it")},

    {Fault::PointMissing, Rule::Point, error, TEXT("\"%1\" is missing"), TEXT("teach the point")},
    {Fault::PointNotTaught, Rule::Point, error, TEXT("\"%1\" is not taught"), TEXT("teach the point")},
    {Fault::PointIncomplete, Rule::Point, error, TEXT("\"%1\" is incomplete: %2"), TEXT("teach the point")},
    {Fault::PointOtherAxes, Rule::Point, error, TEXT("\"%1\" has %2 joint angles, the robot has %3 axes"),
     TEXT("teach the point on this robot")},

    {Fault::SpeedMissing, Rule::Speed, error, TEXT("the speed is missing"), TEXT("enter a speed above 0")},
    {Fault::SpeedNotPositive, Rule::Speed, error, TEXT("the speed is %1 mm/s"),
     TEXT("enter a speed above 0")},
    {Fault::SpeedTooHigh, Rule::Speed, error, TEXT("the speed is %1 mm/s, the cell allows %2 mm/s"),
     TEXT("enter a lower speed")},
    {Fault::WeldSpeedMissing, Rule::WeldSpeed, error, TEXT("the welding speed is missing"),
     TEXT("enter a welding speed above 0")},
    {Fault::WeldSpeedNotPositive, Rule::WeldSpeed, error, TEXT("the welding speed is %1 mm/s"),
     TEXT("enter a welding speed above 0")},
    {Fault::WeldSpeedTooHigh, Rule::WeldSpeed, error,
     TEXT("the welding speed is %1 mm/s, the cell allows %2 mm/s"), TEXT("enter a lower welding speed")},

    {Fault::ZoneNegative, Rule::Zone, warning, TEXT("the zone is negative (%1 mm)"),
     TEXT("enter a zone from 0")},
    {Fault::ZoneEndsEarly, Rule::Zone, warning,
     TEXT("in the zone of %1 mm the laser is switched off too early: the last %2 mm of the seam stay dark"),
     TEXT("enter a smaller zone")},

    {Fault::ArcCoincident, Rule::Arc, error, TEXT("two points of the arc are the same"),
     TEXT("teach the points anew")},
    {Fault::ArcCollinear, Rule::Arc, error, TEXT("the points of the arc lie on a line"),
     TEXT("teach the points anew, or use a line")},
    {Fault::CircleCoincident, Rule::Circle, error, TEXT("two points of the circle are the same"),
     TEXT("teach the points anew")},
    {Fault::CircleCollinear, Rule::Circle, error, TEXT("the points of the circle lie on a line"),
     TEXT("teach the points anew")},

    {Fault::OutOfReach, Rule::Reach, error,
     TEXT("the robot cannot get there: out of reach %1 mm after the line begins"),
     TEXT("teach the point anew, or move the part")},
    {Fault::JointLimit, Rule::Reach, error,
     TEXT("the robot cannot get there: a joint is at its limit %1 mm after the line begins"),
     TEXT("teach the point anew with another posture")},
    {Fault::JointTooFast, Rule::Reach, error,
     TEXT("axis %1 would have to turn at %2 °/s, it can turn at %3 °/s"),
     TEXT("enter a lower speed, or teach another posture")},

    {Fault::NoSetChosen, Rule::Set, error, TEXT("no parameter set is chosen"),
     TEXT("choose a parameter set")},
    {Fault::NoSuchSet, Rule::Set, error, TEXT("there is no parameter set %1 (there are %2)"),
     TEXT("choose a parameter set")},
    {Fault::OutOfRange, Rule::Range, warning, TEXT("\"%1\" is %2, outside %3 to %4"),
     TEXT("enter a value in this range")},

    {Fault::NothingWelded, Rule::WeldEmpty, warning,
     TEXT("nothing moves before the weld is closed in line %1"), TEXT("delete both lines, or add the seam")},

    {Fault::StandingDwell, Rule::Standing, warning, TEXT("the laser is on for %1 ms before the tool moves"),
     TEXT("shorten the early start of the laser in the parameter set")},
    {Fault::StandingDelay, Rule::Standing, warning, TEXT("the laser is on for %1 ms while the tool stands"),
     TEXT("put the delay outside the weld")},
    {Fault::StandingInput, Rule::Standing, warning,
     TEXT("the laser is on while the tool stands and waits for %1"), TEXT("wait outside the weld")},

    {Fault::PortOutOfUse, Rule::Port, warning, TEXT("\"%1\" is out of use, the weld in line %2 needs it"),
     TEXT("take the port into use")},
    {Fault::PortNotAssigned, Rule::Port, warning, TEXT("\"%1\" is in use and assigned to nothing"),
     TEXT("assign the port, or take it out of use")},
    {Fault::PortNowhere, Rule::Port, warning,
     TEXT("\"%1\" is assigned to %2, which the controller does not have"), TEXT("assign the port anew")},
    {Fault::PortsShare, Rule::Port, error, TEXT("\"%1\" and \"%2\" are both assigned to %3"),
     TEXT("assign one of them anew")},
    {Fault::PortRows, Rule::Port, warning, TEXT("there are %1 rows for %2 ports: no port is in use"),
     TEXT("replace the file")},
    {Fault::PortOfAnotherKind, Rule::Port, warning,
     TEXT("the row of \"%1\" is not of the type %2: no port is in use"), TEXT("replace the file")},

    {Fault::OutputOfEquipment, Rule::Output, error, TEXT("%1 belongs to the welding equipment (\"%2\")"),
     TEXT("choose another output")},
    {Fault::OutputUnknown, Rule::Output, warning, TEXT("the controller has no output %1"),
     TEXT("choose another output")},
    {Fault::OutputNotChosen, Rule::Output, warning, TEXT("no output is chosen"), TEXT("choose an output")},
    {Fault::InputUnknown, Rule::Input, warning, TEXT("the controller has no input %1"),
     TEXT("choose another input")},
    {Fault::InputNotChosen, Rule::Input, warning, TEXT("no input is chosen"), TEXT("choose an input")},

    {Fault::StationEdge, Rule::Station, warning, TEXT("\"%1\" is no edge: the input does nothing"),
     TEXT("choose the edge")},
    {Fault::StationNoInput, Rule::Station, warning, TEXT("no start input is chosen"),
     TEXT("choose a start input")},
    {Fault::StationSameInput, Rule::Station, warning, TEXT("%1 starts \"%2\" as well"),
     TEXT("choose another start input")},
    {Fault::StationNoProject, Rule::Station, warning, TEXT("the station has no project"),
     TEXT("choose a project")},
    {Fault::ProjectMissing, Rule::Station, error, TEXT("the project %1 is missing"),
     TEXT("choose another project")},
    {Fault::ProjectUnreadable, Rule::Station, error, TEXT("the project %1 cannot be read: %2"),
     TEXT("choose another project")},
    {Fault::ProjectFaulty, Rule::Station, error, TEXT("the project %1 has errors (%2)"),
     TEXT("open the project and mend it")},

    {Fault::CopyDiffers, Rule::Drift, warning, TEXT("\"%1\" is %2 in the line and %3 in the parameter set"),
     TEXT("edit the line and confirm it")},
};

constexpr bool isComplete() {
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        if (static_cast<std::size_t>(rows[i].fault) != i) {
            return false;
        }
    }
    return std::size(rows) == static_cast<std::size_t>(Fault::CopyDiffers) + 1;
}
static_assert(isComplete());

const Row& rowOf(Fault fault) {
    return rows[static_cast<int>(fault)];
}

constexpr const char* ruleWords[] = {
    "type", "field", "pairing",    "point",    "speed", "weld-speed", "zone",  "arc",     "circle", "reach",
    "set",  "range", "weld-empty", "standing", "port",  "output",     "input", "station", "drift"};
static_assert(std::size(ruleWords) == static_cast<std::size_t>(Rule::Drift) + 1);

/// What a field should hold, by FieldKind.
constexpr const char* kindWords[] = {
    TEXT("a text"),
    TEXT("true or false"),
    TEXT("a number"),
    TEXT("a number"),
    TEXT("a whole number"),
    TEXT("a whole number"),
    TEXT("a whole number"),
    TEXT("\"true\", \"false\" or empty"),
    TEXT("a list of three numbers"),
    TEXT("a list of joint angles"),
    TEXT("an object"),
};
static_assert(std::size(kindWords) == static_cast<std::size_t>(FieldKind::Map) + 1);

constexpr const char* textWord = TEXT("the text \"%1\"");
constexpr const char* listWord = TEXT("a list");
constexpr const char* mapWord = TEXT("an object");

QString foundText(const QVariant& found, const Translate& translate) {
    if (found.userType() == QMetaType::QString) {
        return translate(textWord).arg(found.toString());
    }
    if (found.userType() == QMetaType::QVariantList || found.userType() == QMetaType::QVariantMap) {
        return translate(found.userType() == QMetaType::QVariantList ? listWord : mapWord);
    }
    return found.toString();
}

/// A number to a thousandth, without noughts at its end.
QString numberText(const QVariant& value) {
    constexpr double perUnit = 1000.0;
    return value.userType() == QMetaType::Double
               ? QString::number(qRound64(value.toDouble() * perUnit) / perUnit)
               : value.toString();
}

}  // namespace

QLatin1String ruleWord(Rule rule) {
    return QLatin1String(ruleWords[static_cast<int>(rule)]);
}

Rule Finding::rule() const {
    return rowOf(fault).rule;
}

Severity severityOf(Fault fault) {
    return rowOf(fault).severity;
}

bool isUnreadable(Fault fault) {
    return rowOf(fault).severity == Severity::Error &&
           (rowOf(fault).rule == Rule::Type || rowOf(fault).rule == Rule::Field);
}

const char* textPattern(const Finding& finding) {
    return rowOf(finding.fault).text;
}

const char* remedyPattern(const Finding& finding) {
    return rowOf(finding.fault).remedy;
}

QStringList argumentTexts(const Finding& finding, const Translate& translate) {
    const Translate words =
        translate ? translate : [](const char* english) { return QString::fromUtf8(english); };
    const QVariantList& arguments = finding.arguments;
    if (finding.fault == Fault::FieldKind) {
        return {arguments.value(0).toString(), words(kindWords[arguments.value(1).toInt()]),
                foundText(arguments.value(2), words)};
    }
    QStringList texts;
    for (const QVariant& argument : arguments) {
        texts.append(numberText(argument));
    }
    return texts;
}

QString filled(const QString& pattern, const QStringList& arguments) {
    constexpr QChar sign = QLatin1Char('%');
    QString text;
    for (int i = 0; i < pattern.size(); ++i) {
        const int number =
            pattern.at(i) == sign && i + 1 < pattern.size() ? pattern.at(i + 1).digitValue() : -1;
        if (number >= 1) {
            text += arguments.value(number - 1);
            ++i;
        } else {
            text += pattern.at(i);
        }
    }
    return text;
}

QString englishText(const Finding& finding) {
    return filled(QString::fromUtf8(textPattern(finding)), argumentTexts(finding));
}

std::vector<const char*> findingWords() {
    std::vector<const char*> words(std::begin(kindWords), std::end(kindWords));
    words.insert(words.end(), {textWord, listWord, mapWord});
    for (const Row& row : rows) {
        words.push_back(row.text);
        words.push_back(row.remedy);
    }
    return words;
}

}  // namespace prog
