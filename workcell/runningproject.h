#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

namespace workcell {

/// Reads from the package's page which project runs.
class RunningProject {
public:
    /// `page`: the package's page, or a widget above it.
    explicit RunningProject(const QWidget* page);

    /// The row, from 0, of the station whose project is started or runs; -1: it was started by hand.
    [[nodiscard]] int station() const;
    /// The file of a station's project as its row names it, without a folder; the name of the open project
    /// where no station runs.
    [[nodiscard]] QString name() const;

private:
    QPointer<QWidget> stations_, open_;
};

}  // namespace workcell
