#include "app/results/programline.h"

#include "program/words.h"

#include <QCoreApplication>

namespace app {

namespace {

using prog::Statement;
using prog::StatementType;
using prog::TaughtPoint;

QString pointText(const TaughtPoint& point) {
    if (!point.taught) {
        return QStringLiteral("–");
    }
    const auto mm = [](double metres) { return QString::number(metres * prog::mmPerM, 'f', 1); };
    return QStringLiteral("%1, %2, %3").arg(mm(point.trans.x), mm(point.trans.y), mm(point.trans.z));
}

QString targetText(const Statement& statement) {
    const bool hasTwo = statement.type == StatementType::MoveC || statement.type == StatementType::MoveCC;
    return hasTwo ? pointText(statement.point) + QLatin1Char('\n') + pointText(statement.point1)
                  : pointText(statement.point);
}

QString detailsText(const Statement& statement, const QString& set) {
    switch (statement.type) {
        case StatementType::Open:
            return QStringLiteral("%1, %2 mm/s").arg(set, QString::number(statement.weldSpeedMmPerS));
        case StatementType::Param:
            return set;
        case StatementType::Delay:
            return QStringLiteral("%1 ms").arg(statement.delayMs);
        case StatementType::SetDO:
        case StatementType::WaitDI:
            return QStringLiteral("%1 = %2").arg(
                statement.signal.text(), statement.value ? prog::word::trueText : prog::word::falseText);
        default:
            return {};
    }
}

}  // namespace

ProgramLine programLine(const Statement& statement, const QString& set) {
    ProgramLine line;
    line.type = statement.word;
    line.executed = statement.executed;
    if (statement.moves) {
        line.target = targetText(statement);
        line.speed = QString::number(statement.speedMmPerS);
        line.zone = statement.zoneMm ? QString::number(*statement.zoneMm) : QString();
    }
    QStringList details{detailsText(statement, set), statement.note};
    details.removeAll(QString());
    line.details = details.join(QStringLiteral(" · "));
    return line;
}

QString commandText(const ProgramLine& line) {
    const prog::StatementRow* row = prog::statementRow(line.type);
    return row ? QCoreApplication::translate("QObject", row->caption) : line.type;
}

}  // namespace app
