#pragma once

#include "runner/options.h"
#include "workcell/outside.h"
#include "workcell/workcell.h"

#include <QStackedWidget>

#include <memory>

namespace run {

/// The cell that the options of a run ask for: a controller, simulated or with a robot or a device from
/// outside, and the package with its pages. What fails is told on standard error in one line.
class RunCell {
public:
    explicit RunCell(const Options& options) : options_(options) {}

    /// Makes the cell without the package.
    [[nodiscard]] bool make();
    /// Loads the package, in the language of the options; its pages stay hidden.
    [[nodiscard]] bool open();
    /// Reaches what is outside. When the pages stand: making them takes longer than a heartbeat may.
    [[nodiscard]] bool connectOutside();

    // Of a cell that was made.
    workcell::WorkCell* workCell() const { return cell_.get(); }
    sim::Controller* controller() const { return cell_->controller(); }
    sim::Cell* cell() const { return cell_->cell(); }
    QStackedWidget* pages() const { return pages_.get(); }

private:
    const Options& options_;
    std::unique_ptr<QStackedWidget> pages_;
    workcell::Outside outside_;
    std::unique_ptr<workcell::WorkCell> cell_;
};

}  // namespace run
