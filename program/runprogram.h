#pragma once

#include "program/geometry.h"
#include "program/nearlines.h"
#include "program/record.h"
#include "program/statement.h"

#include <QVector>

#include <functional>
#include <optional>
#include <vector>

namespace prog {

/// What decides, of a line, where welds and batches begin and end.
struct LineKind {
    bool moves = false, opens = false, closes = false;
    bool executed = false;

    static LineKind of(const Record& statement);
};

// The rules about lines before and behind a line. `kindOf` is asked for the kinds of some lines, nearest
// first, so that the rules serve a program of values and the tree alike. Lines count from 0; -1 is none.

using KindOfLine = std::function<LineKind(int line)>;
/// The kinds in a list of statements; valid until it changes.
[[nodiscard]] KindOfLine kindsIn(const Record& program);

/// The nearest start of welding before a line, executed or not: its set and its speed count in a weld.
[[nodiscard]] int openBefore(int line, const KindOfLine& kindOf);
/// The start of the weld in which a line lies: the nearest executed start or stop of welding before it, if
/// that is a start. None for a line that is not executed and for a stop of welding.
[[nodiscard]] int weldOf(int line, const KindOfLine& kindOf);
/// Whether the weld ends behind a line before anything moves: a stop of welding comes before the next move or
/// start of welding, executed or not.
[[nodiscard]] bool isLastBeforeClose(int line, int lineCount, const KindOfLine& kindOf);
/// Whether a run from a line switches the laser on before it moves.
[[nodiscard]] bool opensBeforeItMoves(int line, int lineCount, const KindOfLine& kindOf);

/// The starts and stops of welding in a program, executed or not, by their lines.
struct WeldPairs {
    QVector<int> opens;
    QVector<int> closes;

    static WeldPairs of(const Record& program);
    /// Starts and stops alternate, beginning with a start and ending with a stop.
    [[nodiscard]] bool match() const;
};

/// The statements of a list. A project file holds the tool set as well: the first element with the key `end`.
class ProgramLines {
public:
    explicit ProgramLines(const Record& program);

    [[nodiscard]] int count() const { return static_cast<int>(elements_.size()); }
    [[nodiscard]] Record statement(int line) const { return program_.at(elementOf(line)); }
    /// Where each statement stands in the list.
    [[nodiscard]] const std::vector<int>& elements() const { return elements_; }
    [[nodiscard]] int elementOf(int line) const { return elements_[static_cast<std::size_t>(line)]; }
    /// Position of the tool set in the list; -1 without one.
    [[nodiscard]] int toolset() const { return toolset_; }

private:
    Record program_;
    std::vector<int> elements_;
    int toolset_ = -1;
};

/// A program as values. The answers that look back over many lines are worked out once.
class RunProgram {
public:
    /// The list of statements: a node of the tree, or the array of a project file. All are read now.
    explicit RunProgram(const Record& program);
    explicit RunProgram(const ProgramLines& lines);
    /// The same for a long program: what holds of each line is read from `program` now, its values from
    /// `source`, which has the same statements and must outlive this, when they are asked for.
    RunProgram(const Record& program, const ElementSource& source);

    [[nodiscard]] int lineCount() const { return static_cast<int>(lines_.size()); }
    /// `line` is one of the program, here and below, but where it says otherwise.
    [[nodiscard]] Statement statement(int line) const;
    /// False for lines outside.
    [[nodiscard]] bool isMove(int line) const;
    /// False for lines outside.
    [[nodiscard]] bool isExecuted(int line) const;

    [[nodiscard]] int openBefore(int line) const;
    [[nodiscard]] int weldOf(int line) const;
    [[nodiscard]] bool isLastBeforeClose(int line) const;

    /// The line behind the batch of motions that begins at a line: moves that follow each other without
    /// another statement, or a line that is not executed, between them.
    [[nodiscard]] int batchEnd(int line) const;
    /// Of a move: its own or, while a weld is open, that of the nearest start of welding before it.
    [[nodiscard]] double speedMmPerS(int line, bool weldOpen) const;

    /// The taught point at which the robot stands when a line begins.
    struct Target {
        int line;       ///< of the move that leads there
        bool isPoint1;  ///< its second point
    };
    /// That of the nearest move before, executed or not; a full circle ends where it began. Empty where the
    /// robot has its posture from before the program.
    [[nodiscard]] std::optional<Target> targetBefore(int line) const;
    [[nodiscard]] TaughtPoint point(const Target& target) const;

    /// What is wrong with a full circle whose first point is taught.
    [[nodiscard]] CircleFault circleFaultAt(int line) const;
    /// The first executed full circle in [from, to) that is impossible; -1: none.
    [[nodiscard]] int firstBadCircle(int from, int to) const;

private:
    struct Line {
        StatementType type;
        bool moves, executed;
        int openBefore;
        std::optional<Target> targetBefore;
    };

    [[nodiscard]] const Line& at(int line) const { return lines_.at(static_cast<std::size_t>(line)); }
    [[nodiscard]] KindOfLine kinds() const;
    void read(int count, const std::function<Record(int line)>& recordAt);
    void append(const Statement& statement, int* open, std::optional<Target>* target);

    std::vector<Line> lines_;
    std::vector<Statement> statements_;      ///< without a source
    const ElementSource* source_ = nullptr;  ///< of statements that are read when they are asked for
    mutable NearLines<Statement> lastAsked_;
};

}  // namespace prog
