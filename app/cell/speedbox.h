#pragma once

#include <QFrame>

namespace app {

class Choice;

/// How fast the time of the cell goes: as the wall clock, or several times as fast.
class SpeedBox : public QFrame {
    Q_OBJECT
public:
    explicit SpeedBox(QWidget* parent = nullptr);

signals:
    void chosen(double factor);

private:
    Choice* choice_;
};

}  // namespace app
