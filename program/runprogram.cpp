#include "program/runprogram.h"

#include "program/words.h"

#include <utility>

namespace prog {

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

ProgramLines::ProgramLines(const Record& program) : program_(program) {
    const int count = program.size();
    elements_.reserve(static_cast<std::size_t>(count));
    for (int element = 0; element < count; ++element) {
        if (toolset_ < 0 && program.at(element).at(field::end).exists()) {
            toolset_ = element;
        } else {
            elements_.push_back(element);
        }
    }
}

RunProgram::RunProgram(const Record& program) {
    read(program.size(), [&program](int line) { return program.at(line); });
}

RunProgram::RunProgram(const ProgramLines& lines) {
    read(lines.count(), [&lines](int line) { return lines.statement(line); });
}

RunProgram::RunProgram(const Record& program, const ElementSource& source) : source_(&source) {
    read(program.size(), [&program](int line) { return program.at(line); });
}

void RunProgram::read(int count, const std::function<Record(int)>& recordAt) {
    lines_.reserve(static_cast<std::size_t>(count));
    statements_.reserve(source_ ? 0 : static_cast<std::size_t>(count));
    int open = -1;
    std::optional<Target> target;
    for (int line = 0; line < count; ++line) {
        Statement statement = Statement::from(recordAt(line));
        append(statement, &open, &target);
        if (!source_) {
            statements_.push_back(std::move(statement));
        }
    }
}

/// `open` and `target` are those before the line, and then those before the next.
void RunProgram::append(const Statement& statement, int* open, std::optional<Target>* target) {
    const int line = lineCount();
    lines_.push_back({statement.type, statement.moves, statement.executed, *open, *target});
    if (statement.type == StatementType::Open) {
        *open = line;
    }
    if (statement.type != StatementType::MoveCC && (statement.point1.exists || statement.point.exists)) {
        *target = Target{line, statement.point1.exists};
    }
}

Statement RunProgram::statement(int line) const {
    if (!source_) {
        return statements_.at(static_cast<std::size_t>(line));
    }
    const Statement* const known = lastAsked_.find(line);
    return known ? *known : lastAsked_.keep(line, Statement::from(source_->element(line)));
}

bool RunProgram::isMove(int line) const {
    return line >= 0 && line < lineCount() && at(line).moves;
}

bool RunProgram::isExecuted(int line) const {
    return line >= 0 && line < lineCount() && at(line).executed;
}

KindOfLine RunProgram::kinds() const {
    return [this](int line) {
        const Line& of = at(line);
        return LineKind{of.moves, of.type == StatementType::Open, of.type == StatementType::Close,
                        of.executed};
    };
}

int RunProgram::openBefore(int line) const {
    return at(line).openBefore;
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
    return at(line).targetBefore;
}

TaughtPoint RunProgram::point(const Target& target) const {
    const Statement move = statement(target.line);
    return target.isPoint1 ? move.point1 : move.point;
}

CircleFault RunProgram::circleFaultAt(int line) const {
    const std::optional<Target> start = targetBefore(line);
    if (!start || at(line).type != StatementType::MoveCC) {
        return CircleFault::None;
    }
    const Statement circle = statement(line);
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
