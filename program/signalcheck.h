#pragma once

#include "program/check.h"
#include "program/collector.h"
#include "program/parameters.h"
#include "program/ports.h"
#include "program/signal.h"

#include <QHash>

#include <array>

namespace prog {

/// The ports of a cell as a check reads them: the rows of a document over the defaults. Rows of another
/// number or kind take no port into use.
class PortTable {
public:
    explicit PortTable(const Record& ports);

    struct Row {
        QString name;
        bool isUsed = false;
        bool isDefault = true;  ///< as in a cell that was not set up
    };
    [[nodiscard]] const Row& row(I_PORT port) const { return rows_.at(static_cast<std::size_t>(port)); }
    /// Whether the document holds rows that are not those of the ports.
    [[nodiscard]] bool isMisfit() const { return misfit_; }
    /// Whether any port was assigned or taken into use.
    [[nodiscard]] bool isSetUp() const { return isSetUp_; }
    /// The output port that is assigned to a bit; -1: none.
    [[nodiscard]] int portAt(const Signal& output) const;

private:
    std::array<Row, portCount> rows_;
    QHash<QString, int> outputs_;  ///< ports by "REGISTER.#BIT"
    bool misfit_ = false;
    bool isSetUp_ = false;
};

/// The register and the element that a port's name means: "R.#2" is the third of R, "R" the first.
struct PortTarget {
    QString registerName;
    int element;

    [[nodiscard]] static PortTarget of(const QString& portName);
    [[nodiscard]] QString key() const;
};

/// Whether the controller has what a port is assigned to; true where that is not known.
[[nodiscard]] bool existsFor(I_PORT port, const QString& name, const CellFacts& cell);

/// An output that is set: of the equipment, or one that does not exist. `path`: where its name stands.
void checkOutput(const Signal& output, const QString& path, const PortTable& ports, const CellFacts& cell,
                 Collector* found);
/// An input that is read and does not exist.
void checkInput(const Signal& input, const QString& path, const CellFacts& cell, Collector* found);
/// Where the name of the signal that counts stands in a record.
[[nodiscard]] QString pathOf(const Signal& signal, const SignalFields& fields);

/// The ports that a program's welds need, each told once, at its row.
class PortNeeds {
public:
    PortNeeds(const PortTable& ports, const CellFacts& cell) : ports_(ports), cell_(cell) {}

    /// A weld uses a parameter set. `line`: of its start, from 0.
    void add(const LaserParams& set, int line);
    [[nodiscard]] Findings take() { return found_.take(); }

private:
    void need(I_PORT port, int line);

    const PortTable& ports_;
    const CellFacts& cell_;
    std::array<bool, portCount> told_{};
    Collector found_{Document::Ports};
};

}  // namespace prog
