#pragma once

#include "module/host.h"
#include "program/nearlines.h"
#include "program/runprogram.h"
#include "program/words.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace lumo {

/// The statements of a program as they stood when it was copied. Those of a long program are kept as packed
/// text, which takes a fraction of the memory of nodes; a node is made for a line when it is asked for.
class ProgramCopy : public prog::ElementSource {
public:
    explicit ProgramCopy(const ModuleObject* source);

    /// The copied statement of a line; the null node outside. Valid until those of 32 other lines have been
    /// asked for.
    [[nodiscard]] ModuleObject* record(int line) const;
    [[nodiscard]] bool isPacked() const { return !nodes_; }
    [[nodiscard]] int elementCount() const override;
    [[nodiscard]] QJsonValue element(int line) const override;
    /// The line of a copied statement; -1 for any other node.
    [[nodiscard]] int lineOf(const ModuleObject* record) const;

private:
    [[nodiscard]] QByteArray textOf(int line) const;

    static constexpr std::size_t linesOfPage = 256;

    std::unique_ptr<ModuleObject> nodes_;  ///< of a short program; the others are of a long one
    std::vector<QByteArray> pages_;        ///< the texts of so many lines each, packed
    QByteArray rest_;                      ///< the text of the lines behind the last page
    std::vector<int> begins_;              ///< of the lines, each in its page
    mutable std::size_t openPage_ = SIZE_MAX;
    mutable QByteArray openText_;  ///< of the page that was asked for last
    mutable int readLine_ = -1;
    mutable QJsonValue
        readElement_;  ///< of the line that was read last: its values and its node are asked for
    mutable prog::NearLines<std::unique_ptr<ModuleObject>> records_;
};

/// A walk over a program, or a single step, from its acceptance to its end.
class Run {
public:
    /// Copies the program, and whether it is a dry run: what is edited or switched later changes nothing in a
    /// run.
    Run(const ModuleObject* source, int runMode, bool step);

    /// Whether it walks over `lumo.program`; only such a run can be resumed.
    [[nodiscard]] bool ofHandProgram() const { return mode == prog::runmode::byHand && !isStep; }
    [[nodiscard]] bool isDry() const { return dryPercent > 0.0; }
    /// Whether a statement is one of its copies.
    [[nodiscard]] bool holds(const ModuleObject* stmt) const { return lineOf(stmt) >= 0; }
    /// The copied statement of a line; see ProgramCopy.
    [[nodiscard]] ModuleObject* record(int of) const { return copy_.record(of); }
    /// The line of a copied statement; -1 for a statement that is no copy of this run.
    [[nodiscard]] int lineOf(const ModuleObject* stmt) const { return copy_.lineOf(stmt); }
    /// The statement of the tree that a line was copied from; null when it is gone, or in other programs.
    [[nodiscard]] ModuleObject* original(int of) const;
    /// Its name, which it keeps when it is moved; empty in other programs.
    [[nodiscard]] QString name(int of) const;

private:
    ProgramCopy copy_;
    std::vector<QString> originals_;  ///< names, which statements keep when they are moved

public:
    const prog::RunProgram program;  ///< the values of the copies
    const int mode;                  ///< `hand_or_signalbing` when it was accepted
    const bool isStep;
    const double dryPercent;   ///< of the weld speed, in the welds of a dry run; 0: no dry run
    bool inDryWeld = false;    ///< a dry run is in a weld
    bool isAborted = false;    ///< by a pause, an emergency stop or the application's end
    bool inWeld = false;       ///< it begins inside the weld that was left open
    bool inStatement = false;  ///< a statement is being executed, and no stop has come: a stop interrupts it
    bool reachedEnd = false;   ///< its walk came behind the last line
    int line = -1;             ///< the line that is executed, or is about to be
};

}  // namespace lumo
