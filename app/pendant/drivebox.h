#pragma once

#include <QWidget>

class QLabel;

namespace sim {
class Controller;
}

namespace app {

class SegmentedControl;

/// Operating mode, robot state and program state.
class DriveBox : public QWidget {
    Q_OBJECT
public:
    /// Make it after the package's page, which makes the node of the program's state.
    explicit DriveBox(sim::Controller* controller, QWidget* parent = nullptr);

private:
    void refresh();

    SegmentedControl* mode_;
    QLabel* robot_;
    QLabel* program_;
};

}  // namespace app
