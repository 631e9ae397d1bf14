#include "program/statement.h"

#include "program/words.h"

#include <QtGlobal>

#include <algorithm>

namespace prog {

namespace {

using Kind = FieldKind;

constexpr const char* transMeaning = "x, y, z in m";
constexpr const char* rotMeaning = "rotations about x, y, z in rad";
constexpr const char* nearMeaning = "joint angles in rad";
constexpr const char* cogMeaning = "centre of gravity in m";
constexpr const char* pointMeaning = "posture of the robot; empty until it is taught";

constexpr EntryRange speeds{1, 199, "mm/s"};
constexpr EntryRange weldSpeeds{1, EntryRange::unlimited, "mm/s"};
constexpr EntryRange zones{0, 5, "mm"};
constexpr EntryRange delays{0, EntryRange::unlimited, "ms"};

constexpr FieldRow jointTarget[] = {
    {"point"_l1, Kind::Map, Presence::Required, "{}", pointMeaning},
    {"point.near"_l1, Kind::Joints, Presence::Usual, nullptr, nearMeaning},
    {"point.trans"_l1, Kind::Coordinates, Presence::Shown, nullptr, transMeaning},
    {"point.rot"_l1, Kind::Coordinates, Presence::Shown, nullptr, rotMeaning},
};
constexpr FieldRow lineTarget[] = {
    {"point"_l1, Kind::Map, Presence::Required, "{}", pointMeaning},
    {"point.trans"_l1, Kind::Coordinates, Presence::Usual, nullptr, transMeaning},
    {"point.rot"_l1, Kind::Coordinates, Presence::Usual, nullptr, rotMeaning},
    {"point.near"_l1, Kind::Joints, Presence::Shown, nullptr, nearMeaning},
};
constexpr FieldRow arcTarget[] = {
    {"point1"_l1, Kind::Map, Presence::Required, "{}",
     "second posture: the end of an arc, or the third "
     "point of a full circle, whose first is where the "
     "robot stands"},
    {"point1.trans"_l1, Kind::Coordinates, Presence::Usual, nullptr, transMeaning},
    {"point1.rot"_l1, Kind::Coordinates, Presence::Usual, nullptr, rotMeaning},
    {"point1.near"_l1, Kind::Joints, Presence::Shown, nullptr, nearMeaning},
};
constexpr FieldRow trajectory[] = {
    {"speed"_l1, Kind::Number, Presence::Usual, "20", "mm/s; the point page takes up to 199", Source::Any,
     &speeds},
    {"zone"_l1, Kind::Number, Presence::Usual, "2", "blending zone in mm; the point page takes up to 5",
     Source::Any, &zones},
};
constexpr FieldRow taughtToolset[] = {
    {"toolset"_l1, Kind::Map, Presence::Shown, "{}", "tool and work object when the point was taught"},
    {"toolset.end"_l1, Kind::Map, Presence::Shown, "{}", "tool"},
    {"toolset.end.name"_l1, Kind::Text, Presence::Shown, "\"\""},
    {"toolset.end.trans"_l1, Kind::Coordinates, Presence::Shown, "[0, 0, 0]", transMeaning},
    {"toolset.end.rot"_l1, Kind::Coordinates, Presence::Shown, nullptr, rotMeaning},
    {"toolset.end.load"_l1, Kind::Map, Presence::Shown},
    {"toolset.end.load.cog"_l1, Kind::Coordinates, Presence::Shown, nullptr, cogMeaning},
    {"toolset.end.load.inertia"_l1, Kind::Coordinates, Presence::Shown, nullptr, "kg m²"},
    {"toolset.end.load.mass"_l1, Kind::Number, Presence::Shown, nullptr, "kg"},
    {"toolset.ref"_l1, Kind::Map, Presence::Shown, "{}", "work object"},
    {"toolset.ref.name"_l1, Kind::Text, Presence::Shown, "\"\""},
    {"toolset.ref.trans"_l1, Kind::Coordinates, Presence::Shown, "[0, 0, 0]", transMeaning},
    {"toolset.ref.rot"_l1, Kind::Coordinates, Presence::Shown, nullptr, rotMeaning},
};
constexpr FieldRow parameterSet[] = {
    {"index"_l1, Kind::Set, Presence::Usual, "0",
     "parameter set, from 0; -1: the one that it used was deleted"},
    {"laserPower"_l1, Kind::Entry, Presence::Shown, "50", "%; shown with the line"},
    {"laserDutyCycle"_l1, Kind::Entry, Presence::Shown, "50", "%; shown with the line"},
    {"wireEnable"_l1, Kind::Flag, Presence::Shown, "false", "whether the wire is fed; shown with the line"},
};
constexpr FieldRow weldSpeed[] = {
    {"weldspeed"_l1, Kind::Entry, Presence::Usual, "20", "mm/s; speed of the moves of this weld", Source::Any,
     &weldSpeeds},
};
constexpr FieldRow output[] = {
    {"DO_type"_l1, Kind::Text, Presence::Usual, "\"IO\"", "\"IO\", else the output is the register's bit"},
    {"doName"_l1, Kind::Text, Presence::Usual, "\"\"", "output of the controller", Source::Io},
    {"DO_reg"_l1, Kind::Map, Presence::Shown, "{}"},
    {"DO_reg.name"_l1, Kind::Text, Presence::Required, "\"\"", nullptr, Source::Register},
    {"DO_reg.type"_l1, Kind::Text, Presence::Required, "\"\"", "\"bit\" or \"bool\"", Source::Register},
    {"DO_reg.bias"_l1, Kind::Whole, Presence::Required, "0", "the bit, from 0", Source::Register},
    {"value"_l1, Kind::State, Presence::Usual, "\"\"", "what the output is set to"},
};
constexpr FieldRow input[] = {
    {"DI_type"_l1, Kind::Text, Presence::Usual, "\"IO\"", "\"IO\", else the input is the register's bit"},
    {"diName"_l1, Kind::Text, Presence::Usual, "\"\"", "input of the controller", Source::Io},
    {"DI_reg"_l1, Kind::Map, Presence::Shown, "{}"},
    {"DI_reg.name"_l1, Kind::Text, Presence::Required, "\"\"", nullptr, Source::Register},
    {"DI_reg.type"_l1, Kind::Text, Presence::Shown, "\"\"", "\"bit\" or \"bool\"", Source::Register},
    {"DI_reg.bias"_l1, Kind::Whole, Presence::Required, "0", "the bit, from 0", Source::Register},
    {"value1"_l1, Kind::State, Presence::Usual, "\"\"", "the state that is waited for"},
};
constexpr FieldRow waitingTime[] = {
    {"delaytime"_l1, Kind::Entry, Presence::Usual, "0", "ms", Source::Any, &delays},
};

constexpr FieldRow common[] = {
    {field::type, Kind::Text, Presence::Required},
    {field::note, Kind::Text, Presence::Shown, nullptr, "remark"},
    {field::execute, Kind::Flag, Presence::Optional, "true", "false: runs skip the line"},
};
constexpr FieldRow toolset[] = {
    {"end"_l1, Kind::Map, Presence::Required, "{}", "tool"},
    {"end.name"_l1, Kind::Text, Presence::Required, "\"tool0\""},
    {"end.trans"_l1, Kind::Coordinates, Presence::Optional, "[0, 0, 0]", transMeaning},
    {"end.rot"_l1, Kind::Coordinates, Presence::Optional, "[0, 0, 0]", rotMeaning},
    {"end.load"_l1, Kind::Map, Presence::Optional, "{}"},
    {"end.load.cog"_l1, Kind::Coordinates, Presence::Optional, "[0, 0, 0]", cogMeaning},
    {"end.load.inertia"_l1, Kind::Coordinates, Presence::Optional, "[0, 0, 0]", "kg m²"},
    {"end.load.mass"_l1, Kind::Number, Presence::Optional, "0", "kg"},
    {"ref"_l1, Kind::Map, Presence::Required, "{}", "work object"},
    {"ref.name"_l1, Kind::Text, Presence::Required, "\"wobj0\""},
    {"ref.trans"_l1, Kind::Coordinates, Presence::Optional, "[0, 0, 0]", transMeaning},
    {"ref.rot"_l1, Kind::Coordinates, Presence::Optional, "[0, 0, 0]", rotMeaning},
};

template <std::size_t... sizes>
FieldRows joined(const FieldRow (&... parts)[sizes]) {
    FieldRows all;
    (all.insert(all.end(), std::begin(parts), std::end(parts)), ...);
    return all;
}

std::vector<StatementRow> makeRows() {
    using Type = StatementType;
    constexpr bool no = false;
    constexpr bool yes = true;
    return {
        // type, word, caption, moves, switches the laser, has a dialog, fields
        {Type::MoveJ, statement::moveJ, QT_TRANSLATE_NOOP("QObject", "空走"), yes, no, no,
         joined(jointTarget, trajectory)},
        {Type::MoveL, statement::moveL, QT_TRANSLATE_NOOP("QObject", "直线"), yes, no, no,
         joined(lineTarget, trajectory, taughtToolset)},
        {Type::MoveC, statement::moveC, QT_TRANSLATE_NOOP("QObject", "圆弧"), yes, no, no,
         joined(lineTarget, arcTarget, trajectory, taughtToolset)},
        {Type::MoveCC, statement::moveCC, QT_TRANSLATE_NOOP("QObject", "全圆"), yes, no, no,
         joined(lineTarget, arcTarget, trajectory, taughtToolset)},
        {Type::Open, statement::open, QT_TRANSLATE_NOOP("QObject", "开始焊接"), no, yes, yes,
         joined(parameterSet, weldSpeed)},
        {Type::Close, statement::close, QT_TRANSLATE_NOOP("QObject", "停止焊接"), no, yes, no, {}},
        {Type::Param, statement::param, QT_TRANSLATE_NOOP("QObject", "工艺参数"), no, no, yes,
         joined(parameterSet)},
        {Type::SetDO, statement::setDO, statement::setDO.data(), no, no, yes, joined(output)},
        {Type::WaitDI, statement::waitDI, statement::waitDI.data(), no, no, yes, joined(input)},
        {Type::Delay, statement::delay, QT_TRANSLATE_NOOP("QObject", "延时"), no, no, yes,
         joined(waitingTime)},
    };
}

/// The three truths of the texts that dialogs store: an output is on but for "false", a register's bit is off
/// but for "true", and the state on is waited for but for "false".
void readSignal(const Record& record, Statement* statement) {
    if (statement->type == StatementType::SetDO) {
        statement->signal = Signal::from(record, setOutput);
        const QString value = record.at(field::value).text();
        statement->value = statement->signal.isIo ? value != word::falseText : value == word::trueText;
    } else if (statement->type == StatementType::WaitDI) {
        statement->signal = Signal::from(record, awaitedInput);
        statement->value = record.at(field::value1).text() != word::falseText;
    }
}

}  // namespace

const std::vector<StatementRow>& statementRows() {
    static const std::vector<StatementRow> rows = makeRows();
    return rows;
}

const StatementRow* statementRow(const QString& type) {
    const std::vector<StatementRow>& rows = statementRows();
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&type](const StatementRow& row) { return type == row.word; });
    return found == rows.end() ? nullptr : &*found;
}

const FieldRows& commonFields() {
    static const FieldRows rows = joined(common);
    return rows;
}

const FieldRows& toolsetFields() {
    static const FieldRows rows = joined(toolset);
    return rows;
}

EntryRange entryRange(const QString& type, QLatin1String field) {
    const StatementRow* const row = statementRow(type);
    if (row) {
        for (const FieldRow& entry : row->fields) {
            if (entry.path == field && entry.range) {
                return *entry.range;
            }
        }
    }
    return {};
}

bool isMove(const QString& type) {
    return type.startsWith(QLatin1String("move"));
}

bool isExecuted(const Record& statement) {
    return statement.at(field::execute).flag(true);
}

TaughtPoint TaughtPoint::from(const Record& record) {
    TaughtPoint point;
    point.exists = record.exists();
    const Record trans = record.at(field::trans);
    const Record rot = record.at(field::rot);
    point.taught = trans.isList() && trans.size() >= 3;
    point.turned = rot.isList() && rot.size() >= 3;
    for (int i = 0; i < 3; ++i) {
        point.trans[std::size_t(i)] = trans.at(i).number();
        point.rot[std::size_t(i)] = rot.at(i).number();
    }
    const Record joints = record.at(field::near);
    point.joints.reserve(static_cast<std::size_t>(joints.size()));
    for (int i = 0; i < joints.size(); ++i) {
        point.joints.push_back(joints.at(i).number());
    }
    return point;
}

Statement Statement::from(const Record& record) {
    Statement statement;
    statement.word = record.at(field::type).text();
    const StatementRow* const row = statementRow(statement.word);
    statement.type = row ? row->type : StatementType::Unknown;
    statement.moves = isMove(statement.word);
    statement.executed = isExecuted(record);
    statement.note = record.at(field::note).text();
    statement.point = TaughtPoint::from(record.at(field::point));
    statement.point1 = TaughtPoint::from(record.at(field::point1));
    statement.speedMmPerS = record.at(field::speed).number();
    const Record zone = record.at(field::zone);
    if (zone.exists()) {
        statement.zoneMm = zone.number();
    }
    statement.weldSpeedMmPerS = record.at(field::weldspeed).number();
    statement.set = record.at(field::index).integer();
    statement.delayMs = std::max(0, record.at(field::delaytime).integer());
    readSignal(record, &statement);
    const Record frames = record.at(field::toolset);
    statement.tool = frames.at(field::end).at(field::name).text();
    statement.workObject = frames.at(field::ref).at(field::name).text();
    return statement;
}

}  // namespace prog
