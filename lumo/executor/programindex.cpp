#include "executor/programindex.h"

#include "program/words.h"

using namespace lumo;
using namespace prog;

namespace {

/// Where a statement leaves the robot; null when it ends where it began or has no points.
ModuleObject* endPointOf(ModuleObject* stmt, const QString& type) {
    if (type == prog::statement::moveCC) {
        return nullptr;
    }
    for (const QLatin1String name : {field::point1, field::point}) {
        if (stmt->hasCmobj(name, false)) {
            return stmt->c(name, false);
        }
    }
    return nullptr;
}

}  // namespace

QString statementType(const ModuleObject* stmt) {
    return stmt->c(field::type, false)->getString(QString());
}

bool isMoveStatement(const ModuleObject* stmt) {
    return statementType(stmt).startsWith(QLatin1String("move"));
}

bool isExecutedStatement(const ModuleObject* stmt) {
    return stmt->c(field::execute, false)->getBool(true);
}

RunProgram::RunProgram(const ModuleObject* program) : program_(QStringLiteral("run")) {
    program_.copyFrom(nullptr, program, false, false);
    const int count = program_.cmobjCount();
    lines_.reserve(count);
    int open = -1;
    ModuleObject* target = nullptr;
    for (int line = 0; line < count; ++line) {
        ModuleObject* const stmt = program_.c(line);
        const QString type = statementType(stmt);
        lines_.append(
            {stmt, type.startsWith(QLatin1String("move")), isExecutedStatement(stmt), open, target});
        if (type == prog::statement::open) {
            open = line;
        }
        if (ModuleObject* const end = endPointOf(stmt, type)) {
            target = end;
        }
    }
}

ModuleObject* RunProgram::statement(int line) const {
    return line >= 0 && line < lines_.size() ? lines_.at(line).statement : ModuleObject::null();
}

bool RunProgram::isMove(int line) const {
    return line >= 0 && line < lines_.size() && lines_.at(line).isMove;
}

bool RunProgram::isExecuted(int line) const {
    return line >= 0 && line < lines_.size() && lines_.at(line).isExecuted;
}

ModuleObject* RunProgram::openBefore(int line) const {
    const int open = line >= 0 && line < lines_.size() ? lines_.at(line).openBefore : -1;
    return open < 0 ? nullptr : lines_.at(open).statement;
}

ModuleObject* RunProgram::targetBefore(int line) const {
    return line >= 0 && line < lines_.size() ? lines_.at(line).targetBefore : nullptr;
}

CircleFault RunProgram::circleFaultAt(int line) const {
    ModuleObject* const start = targetBefore(line);
    ModuleObject* const stmt = statement(line);
    if (!start || statementType(stmt) != prog::statement::moveCC) {
        return CircleFault::None;
    }
    return circleFault(start, stmt->c(field::point, false), stmt->c(field::point1, false));
}

int RunProgram::firstBadCircle(int from, int to) const {
    for (int i = from; i < to; ++i) {
        if (lines_.at(i).isMove && lines_.at(i).isExecuted && circleFaultAt(i) != CircleFault::None) {
            return i;
        }
    }
    return -1;
}
