#include "editor/statementtext.h"

#include "program/ports.h"
#include "program/statement.h"

#include <QObject>
#include <QStringList>

using namespace lumo;
using namespace prog;

namespace {

constexpr double pi = 3.141592653589793;
constexpr int decimals = 3;

QString fixed(double value) {
    return QString::number(value, 'f', decimals);
}

QString position(const ModuleObject* trans, double factor) {
    return QStringLiteral("xyz(%1, %2, %3)")
               .arg(fixed(trans->c(0)->getDouble() * factor), fixed(trans->c(1)->getDouble() * factor),
                    fixed(trans->c(2)->getDouble() * factor)) +
           QObject::tr("mm;");
}

QString frame(const QString& label, const ModuleObject* node) {
    return label + node->c(field::name)->getString() + QLatin1String(", ") + QObject::tr("坐标：") +
           position(node->c(field::trans), 1.0);
}

const ModuleObject* parameterSet(const ModuleObject* index) {
    return m(key::param)->c(index->getInt(0));
}

/// The text of one field of a statement.
struct Piece {
    QLatin1String field;
    QString (*text)(const ModuleObject*);
};

void addPieces(QStringList& pieces, const ModuleObject* statement, std::initializer_list<Piece> table) {
    for (const Piece& piece : table) {
        const ModuleObject* const node = statement->c(piece.field);
        if (!node->isNull()) {
            pieces << piece.text(node);
        }
    }
}

void addPoints(QStringList& pieces, const ModuleObject* statement) {
    const bool joints = statement->c(field::type)->getString().endsWith(QLatin1Char('J'));
    addPieces(pieces, statement,
              {{field::point, joints ? joints2cn : posture2cn},
               {field::point1, posture2cn},
               {field::speed, speed2cn},
               {field::zone, zone2cn}});
    const ModuleObject* const toolset = statement->c(field::toolset);
    addPieces(pieces, toolset, {{field::end, toolsetend2cn}, {field::ref, toolsetref2cn}});
}

/// Shows the present values of the set and the port, not the statement's copies of them.
void addWeld(QStringList& pieces, const ModuleObject* statement) {
    const ModuleObject* const index = statement->c(field::index);
    if (!index->isNull()) {
        pieces << index2cn(index);
    }
    if (statement->hasCmobj(field::laserPower)) {
        pieces << laserPower2cn(index);
    }
    if (statement->hasCmobj(field::laserDutyCycle)) {
        pieces << laserDutyCycle2cn(index);
    }
    if (statement->hasCmobj(field::wireEnable)) {
        pieces << wireEnable2cn(m(key::port)->c(DO_WIRE_ENABLE));
    }
    addPieces(pieces, statement, {{field::weldspeed, weldSpeed2cn}});
}

void addSignals(QStringList& pieces, const ModuleObject* statement) {
    if (statement->hasCmobj(field::doName)) {
        pieces << do2Cn(statement);
    }
    if (statement->hasCmobj(field::diName)) {
        pieces << di2Cn(statement);
    }
    addPieces(pieces, statement,
              {{field::value, value2Cn}, {field::value1, waitValue2Cn}, {field::delaytime, delayTime2Cn}});
}

}  // namespace

QString type2cn(const QString& type) {
    const StatementRow* const row = statementRow(type);
    return row ? QObject::tr(row->caption) : QString();
}

QString joints2cn(const ModuleObject* point) {
    const ModuleObject* const angles = point->c(field::near);
    const auto degrees = [angles](int joint) { return fixed(angles->c(joint)->getDouble() * 180.0 / pi); };
    QString text = QObject::tr("轴角度：") + QLatin1Char('(') + degrees(0);
    for (int joint = 1; joint < 6; ++joint) {
        text += QLatin1String(", ") + degrees(joint);
    }
    if (kordservice()->get(nullptr, key::sysInfo, field::jointNum)->getInt() != 6) {
        text += QLatin1Char(',') + degrees(6);
    }
    return text + QLatin1Char(')') + QObject::tr("°；");
}

QString posture2cn(const ModuleObject* point) {
    return QObject::tr("点位：") + position(point->c(field::trans), 1000.0);
}

QString speed2cn(const ModuleObject* speed) {
    return QObject::tr("速度：") + QLatin1Char('v') + QString::number(speed->getInt()) +
           QObject::tr("mm/s；");
}

QString zone2cn(const ModuleObject* zone) {
    return QObject::tr("转弯区：") + QString::number(zone->getInt()) + QObject::tr("mm；");
}

QString toolsetend2cn(const ModuleObject* end) {
    return frame(QObject::tr("工具："), end);
}

QString toolsetref2cn(const ModuleObject* ref) {
    return frame(QObject::tr("工件："), ref);
}

QString index2cn(const ModuleObject* index) {
    return QObject::tr("参数名称：") + parameterSet(index)->c(field::name)->getString() + QLatin1Char(';');
}

QString laserPower2cn(const ModuleObject* index) {
    return QObject::tr("激光功率：") + parameterSet(index)->c(field::power)->getString() +
           QLatin1String("%;");
}

QString laserDutyCycle2cn(const ModuleObject* index) {
    return QObject::tr("激光占空比：") + parameterSet(index)->c(field::ratio)->getString() +
           QLatin1String("%;");
}

QString wireEnable2cn(const ModuleObject* port) {
    return QObject::tr("送丝使能：") +
           (port->c(field::enable)->getBool() ? QLatin1String("ON;") : QLatin1String("OFF;"));
}

QString weldSpeed2cn(const ModuleObject* weldspeed) {
    return QObject::tr("焊接速度：") + QLatin1Char('v') + weldspeed->getString() + QObject::tr("mm/s；");
}

QString do2Cn(const ModuleObject* statement) {
    return QObject::tr("DO名称：") + Signal::from(statement, setOutput).text();
}

QString di2Cn(const ModuleObject* statement) {
    return QObject::tr("DI名称：") + Signal::from(statement, awaitedInput).text();
}

QString value2Cn(const ModuleObject* value) {
    return QObject::tr("设置为：") + value->getString();
}

QString waitValue2Cn(const ModuleObject* value) {
    return QObject::tr("等待该信号变为：") + value->getString();
}

QString delayTime2Cn(const ModuleObject* delaytime) {
    return QObject::tr("延时时间为：") + delaytime->getString() + QObject::tr("ms");
}

namespace lumo {

QString statementDetails(const ModuleObject* statement) {
    QStringList pieces;
    if (statement->hasCmobj(field::name)) {
        pieces << statement->c(field::name)->getString();
    }
    addPoints(pieces, statement);
    addWeld(pieces, statement);
    addSignals(pieces, statement);
    if (pieces.isEmpty()) {
        return QString();
    }
    const bool numbered = statement->c(field::type)->getString() != statement::delay;
    QString text = QStringLiteral("");
    for (int i = 0; i < pieces.size(); ++i) {
        if (pieces.at(i).isEmpty()) {
            continue;
        }
        if (numbered) {
            text += QString::number(i + 1) + QLatin1Char('.');
        }
        text += pieces.at(i);
        if (i + 1 < pieces.size()) {
            text += QLatin1Char('\n');
        }
    }
    return text;
}

}  // namespace lumo
