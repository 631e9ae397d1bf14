#pragma once

#include <QWidget>

class QLabel;

namespace sim {
class Controller;
}

namespace app {

class Choice;

/// Operating mode of the robot, and what robot and program are doing.
class DriveBox : public QWidget {
    Q_OBJECT
public:
    /// The package's page has been made: the program's state is there to be followed.
    explicit DriveBox(sim::Controller* controller, QWidget* parent = nullptr);

private:
    void refresh();

    Choice* mode_;
    QLabel* robot_;
    QLabel* program_;
};

}  // namespace app
