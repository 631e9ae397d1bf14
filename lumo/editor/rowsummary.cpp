#include "editor/rowsummary.h"

#include "editor/statementtext.h"
#include "look/type.h"
#include "program/ports.h"
#include "program/statement.h"
#include "program/words.h"
#include "widgets/fieldanswer.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

using namespace prog;

namespace lumo {

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(lumo::RowSummary)
};

constexpr double degreesPerRad = 180.0 / 3.141592653589793;
constexpr double mmPerM = 1000.0;
constexpr int columns = RowSummary::columns;

/// One decimal; none where the number would be wider than its column.
QString figureText(double value) {
    constexpr double widest = 9999.95;
    return look::figure(value, std::abs(value) < widest ? 1 : 0);
}

void addFigures(RowSummary* summary, const ModuleObject* numbers, int count, double factor) {
    for (int first = 0; first < count; first += columns) {
        std::array<QString, columns> line;
        for (int i = first; i < std::min(first + columns, count); ++i) {
            line[static_cast<std::size_t>(i - first)] = figureText(numbers->c(i)->getDouble() * factor);
        }
        summary->figures.append(line);
    }
}

void addJoints(RowSummary* summary, const ModuleObject* point) {
    const int joints = kordservice()->get(nullptr, key::sysInfo, field::jointNum)->getInt();
    addFigures(summary, point->c(field::near), joints == 6 ? 6 : 7, degreesPerRad);
    for (auto text = summary->figures.last().rbegin(); text != summary->figures.last().rend(); ++text) {
        if (!text->isEmpty()) {
            *text += QChar(0xb0);
            break;
        }
    }
}

void addPoints(RowSummary* summary, const ModuleObject* statement) {
    const ModuleObject* const point = statement->c(field::point);
    if (!point->isNull() && summary->type.endsWith(QLatin1Char('J'))) {
        addJoints(summary, point);
    } else if (!point->isNull()) {
        addFigures(summary, point->c(field::trans), columns, mmPerM);
    }
    const ModuleObject* const point1 = statement->c(field::point1);
    if (!point1->isNull()) {
        addFigures(summary, point1->c(field::trans), columns, mmPerM);
    }
    const ModuleObject* const speed = statement->c(field::speed);
    if (!speed->isNull()) {
        summary->speed = QString::number(speed->getInt());
        summary->speedUnit = unitText("mm/s");
    }
    const ModuleObject* const zone = statement->c(field::zone);
    if (!zone->isNull()) {
        summary->zone = QString::number(zone->getInt());
    }
}

/// The present values of the set and the port, as the full text has them.
void addWeld(RowSummary* summary, const ModuleObject* statement) {
    const ModuleObject* const index = statement->c(field::index);
    if (index->isNull()) {
        return;
    }
    const ModuleObject* const set = m(key::param)->c(index->getInt());
    summary->title = set->c(field::name)->getString();
    if (!set->isNull()) {
        summary->second = set->c(field::power)->getString() + QStringLiteral(" %");
        if (m(key::port)->c(DO_WIRE_ENABLE)->c(field::enable)->getBool()) {
            summary->second += QStringLiteral(" · ") + Text::tr("送丝 ON");
        }
    }
    const ModuleObject* const speed = statement->c(field::weldspeed);
    if (!speed->isNull()) {
        summary->speed = speed->getString();
        summary->speedUnit = unitText("mm/s");
    }
}

void addSignal(RowSummary* summary, const ModuleObject* statement) {
    const bool isOutput = summary->type == statement::setDO;
    if (isOutput || summary->type == statement::waitDI) {
        const Signal signal = Signal::from(statement, isOutput ? setOutput : awaitedInput);
        summary->title = signal.text() + QStringLiteral(" = ") +
                         statement->c(isOutput ? field::value : field::value1)->getString();
    } else if (summary->type == statement::delay) {
        summary->speed = statement->c(field::delaytime)->getString();
        summary->speedUnit = unitText("ms");
    }
}

}  // namespace

RowSummary summaryOf(const ModuleObject* statement) {
    RowSummary summary;
    summary.type = statement->c(field::type)->getString();
    summary.command = type2cn(summary.type);
    summary.note = statement->c(field::note)->getString().simplified();
    summary.executed = isExecuted(statement);
    addPoints(&summary, statement);
    addWeld(&summary, statement);
    addSignal(&summary, statement);
    summary.tool = toolOf(statement);
    return summary;
}

QString toolOf(const ModuleObject* statement) {
    const ModuleObject* const toolset = statement->c(field::toolset);
    if (toolset->isNull()) {
        return {};
    }
    const QString tool = toolset->c(field::end)->c(field::name)->getString();
    const QString object = toolset->c(field::ref)->c(field::name)->getString();
    return tool.isEmpty() || object.isEmpty() ? tool + object : tool + QStringLiteral(", ") + object;
}

int figureLines(const QString& type, int joints) {
    if (!isMove(type)) {
        return 0;
    }
    if (type.endsWith(QLatin1Char('J'))) {
        return ((joints == 6 ? 6 : 7) + columns - 1) / columns;
    }
    return type == statement::moveL ? 1 : 2;
}

QString statementIcon(const QString& type) {
    struct Row {
        QLatin1String type;
        const char* icon;
    };
    static constexpr Row icons[] = {{statement::moveJ, "joint"},
                                    {statement::moveL, "line"},
                                    {statement::moveC, "arc"},
                                    {statement::moveCC, "circle"},
                                    {statement::open, "laser"},
                                    {statement::close, "laser_off"},
                                    {statement::param, "welding_parameters"},
                                    {statement::setDO, "set_output"},
                                    {statement::waitDI, "wait_input"},
                                    {statement::delay, "delay"}};
    for (const Row& row : icons) {
        if (type == row.type) {
            return QString::fromLatin1(row.icon);
        }
    }
    return {};
}

}  // namespace lumo
