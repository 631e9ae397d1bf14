#pragma once

#include "program/check.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantList>

#include <memory>
#include <optional>

class ProgramTable;

namespace lumo {

/// Keeps what is wrong with the program in the editor: the findings of `lumo.program` with the parameter sets
/// and ports, and of the reach where the host gives an arm.
///
/// It checks a moment after the last change, never inside the click or the write that made it, the reach in
/// parts; not while something runs: a long program would hold the run up. Until then the findings follow
/// their lines: those of a removed line go with it, those of a program that was replaced are dropped.
class ProgramCheck : public QObject {
    Q_OBJECT
public:
    /// `table` shows the program and reports its changes; must outlive the check.
    explicit ProgramCheck(ProgramTable* table, QObject* parent = nullptr);

    /// As of the last check, by their lines.
    [[nodiscard]] const prog::Findings& findings() const { return findings_; }
    /// Rows with a point, arc, circle or reach that is impossible, each once.
    [[nodiscard]] QVariantList impossibleLines() const;
    [[nodiscard]] int errors() const { return errors_; }
    [[nodiscard]] int warnings() const { return static_cast<int>(findings_.size()) - errors_; }

    /// The worst of a line's findings; nothing for a line without.
    [[nodiscard]] std::optional<prog::Severity> worstAt(int line) const;
    /// Whether a point of the line was never taught.
    [[nodiscard]] bool isUntaught(int line) const;
    /// A line's findings and what to do, in the operator's language, one below the other.
    [[nodiscard]] QString textAt(int line) const;

    /// Checks soon. To be called when something may have changed that the program depends on.
    void touch();
    /// Checks all at once, also while something runs.
    const prog::Findings& checkNow();

signals:
    /// The findings, or their lines, are other ones.
    void changed();
    /// All is checked that was to be.
    void checked();

private:
    using Place = prog::Findings::const_iterator;
    [[nodiscard]] std::pair<Place, Place> findingsAt(int line) const;
    void check();
    /// Checks all but the reach, whose earlier findings stay until it is checked again.
    void checkProgram();
    void beginReach();
    void advanceReach();
    void takeReach();
    void take(prog::Findings findings);
    void index();
    void linesAdded(int first, int count);
    void linesRemoved(int first, int count);
    void lineMoved(int from, int to);
    void programReplaced();

    ProgramTable* table_;
    prog::Findings findings_;
    int errors_ = 0;
    QHash<int, prog::Severity> worst_;  ///< by line
    QTimer rest_;
    QTimer slices_;                            ///< of the check of the reach, while it is under way
    std::unique_ptr<prog::ReachCheck> reach_;  ///< null where the host gives no arm
    bool isDue_ = false;                       ///< the check waits for the end of a run
};

}  // namespace lumo
