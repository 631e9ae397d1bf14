#include "program/runprogram.h"

#include "program/words.h"

namespace prog {

namespace {

LineKind kindOf(const Statement& statement) {
    return {statement.moves, statement.type == StatementType::Open, statement.type == StatementType::Close,
            statement.executed};
}

}  // namespace

LineKind LineKind::of(const Record& statement) {
    const QString type = statement.at(field::type).text();
    return {prog::isMove(type), type == statement::open, type == statement::close, isExecuted(statement)};
}

KindOfLine kindsIn(const Record& program) {
    return [program](int line) { return LineKind::of(program.at(line)); };
}

int openBefore(int line, const KindOfLine& kindOf) {
    int before = line - 1;
    while (before >= 0 && !kindOf(before).opens) {
        --before;
    }
    return before;
}

int weldOf(int line, const KindOfLine& kindOf) {
    const LineKind own = kindOf(line);
    if (!own.executed || own.closes) {
        return -1;
    }
    for (int before = line - 1; before >= 0; --before) {
        const LineKind kind = kindOf(before);
        if (kind.executed && (kind.opens || kind.closes)) {
            return kind.opens ? before : -1;
        }
    }
    return -1;
}

bool isLastBeforeClose(int line, int lineCount, const KindOfLine& kindOf) {
    for (int behind = line + 1; behind < lineCount; ++behind) {
        const LineKind kind = kindOf(behind);
        if (kind.closes || kind.opens || kind.moves) {
            return kind.closes;
        }
    }
    return false;
}

bool opensBeforeItMoves(int line, int lineCount, const KindOfLine& kindOf) {
    for (int i = line; i >= 0 && i < lineCount; ++i) {
        const LineKind kind = kindOf(i);
        if (kind.executed && (kind.opens || kind.moves)) {
            return kind.opens;
        }
    }
    return false;
}

WeldPairs WeldPairs::of(const Record& program) {
    WeldPairs pairs;
    for (int line = 0; line < program.size(); ++line) {
        const LineKind kind = LineKind::of(program.at(line));
        if (kind.opens) {
            pairs.opens.append(line);
        } else if (kind.closes) {
            pairs.closes.append(line);
        }
    }
    return pairs;
}

bool WeldPairs::match() const {
    if (opens.size() != closes.size()) {
        return false;
    }
    for (int pair = 0; pair < opens.size(); ++pair) {
        const bool isLast = pair + 1 == opens.size();
        if (closes.at(pair) < opens.at(pair) || (!isLast && opens.at(pair + 1) < closes.at(pair))) {
            return false;
        }
    }
    return true;
}

ProgramLines ProgramLines::of(const Record& program) {
    ProgramLines lines;
    const int count = program.size();
    lines.statements.reserve(static_cast<std::size_t>(count));
    lines.elements.reserve(static_cast<std::size_t>(count));
    for (int element = 0; element < count; ++element) {
        const Record record = program.at(element);
        if (lines.toolset < 0 && record.at(field::end).exists()) {
            lines.toolset = element;
        } else {
            lines.statements.push_back(record);
            lines.elements.push_back(element);
        }
    }
    return lines;
}

RunProgram::RunProgram(const Record& program) {
    const int count = program.size();
    lines_.reserve(static_cast<std::size_t>(count));
    int open = -1;
    std::optional<Target> target;
    for (int line = 0; line < count; ++line) {
        append(program.at(line), &open, &target);
    }
}

RunProgram::RunProgram(const std::vector<Record>& statements) {
    lines_.reserve(statements.size());
    int open = -1;
    std::optional<Target> target;
    for (const Record& record : statements) {
        append(record, &open, &target);
    }
}

/// `open` and `target` are those before the line, and then those before the next.
void RunProgram::append(const Record& record, int* open, std::optional<Target>* target) {
    lines_.push_back({Statement::from(record), *open, *target});
    const Statement& statement = lines_.back().statement;
    const int line = lineCount() - 1;
    if (statement.type == StatementType::Open) {
        *open = line;
    }
    if (statement.type != StatementType::MoveCC && (statement.point1.exists || statement.point.exists)) {
        *target = Target{line, statement.point1.exists};
    }
}

const Statement& RunProgram::statement(int line) const {
    return lines_.at(static_cast<std::size_t>(line)).statement;
}

bool RunProgram::isMove(int line) const {
    return line >= 0 && line < lineCount() && statement(line).moves;
}

bool RunProgram::isExecuted(int line) const {
    return line >= 0 && line < lineCount() && statement(line).executed;
}

KindOfLine RunProgram::kinds() const {
    return [this](int line) { return kindOf(statement(line)); };
}

int RunProgram::openBefore(int line) const {
    return lines_.at(static_cast<std::size_t>(line)).openBefore;
}

int RunProgram::weldOf(int line) const {
    return prog::weldOf(line, kinds());
}

bool RunProgram::isLastBeforeClose(int line) const {
    return prog::isLastBeforeClose(line, lineCount(), kinds());
}

int RunProgram::batchEnd(int line) const {
    while (isMove(line) && isExecuted(line)) {
        ++line;
    }
    return line;
}

double RunProgram::speedMmPerS(int line, bool weldOpen) const {
    const int open = weldOpen ? openBefore(line) : -1;
    return open < 0 ? statement(line).speedMmPerS : statement(open).weldSpeedMmPerS;
}

std::optional<RunProgram::Target> RunProgram::targetBefore(int line) const {
    return lines_.at(static_cast<std::size_t>(line)).targetBefore;
}

const TaughtPoint& RunProgram::point(const Target& target) const {
    const Statement& move = statement(target.line);
    return target.isPoint1 ? move.point1 : move.point;
}

CircleFault RunProgram::circleFaultAt(int line) const {
    const Statement& circle = statement(line);
    const std::optional<Target> start = targetBefore(line);
    if (!start || circle.type != StatementType::MoveCC) {
        return CircleFault::None;
    }
    return circleFault(point(*start).trans, circle.point.trans, circle.point1.trans);
}

int RunProgram::firstBadCircle(int from, int to) const {
    for (int line = from; line < to; ++line) {
        if (isExecuted(line) && circleFaultAt(line) != CircleFault::None) {
            return line;
        }
    }
    return -1;
}

}  // namespace prog
