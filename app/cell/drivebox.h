#pragma once

#include <QGroupBox>

class QLabel;

namespace sim {
class Controller;
}

namespace app {

class Choice;

/// Drive power and operating mode of the robot, and what robot and program are doing.
class DriveBox : public QGroupBox {
    Q_OBJECT
public:
    /// The package's page has been made: the program's state is there to be followed.
    explicit DriveBox(sim::Controller* controller, QWidget* parent = nullptr);

private:
    void refresh();

    Choice* power_;
    Choice* mode_;
    QLabel* robot_;
    QLabel* program_;
};

}  // namespace app
