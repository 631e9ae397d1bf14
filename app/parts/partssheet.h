#pragma once

#include "app/parts/partcounter.h"
#include "app/sheet/sheet.h"

#include <QPointer>

class QLineEdit;

namespace app {

/// Target and reset of the counter of parts of one project.
class PartsSheet : public Sheet {
    Q_OBJECT
public:
    /// `counter` must outlive it. `project`: absolute path of its file.
    PartsSheet(PartCounter* counter, const QString& project, QWidget* over);

private:
    void refresh();
    void takeTarget();
    void reset();

    PartCounter* counter_;
    QString project_;
    QLabel* made_;
    QLabel* times_;
    QLineEdit* target_;
    QAbstractButton* reset_;
    bool asked_ = false;  ///< the reset button was pressed once
};

}  // namespace app
