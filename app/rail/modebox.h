#pragma once

#include <QWidget>

class QLabel;

namespace sim {
class Controller;
}

namespace app {

class SegmentedControl;

/// Operating mode: automatic or manual.
class ModeBox : public QWidget {
    Q_OBJECT
public:
    explicit ModeBox(sim::Controller* controller, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void refresh();
    void fit();

    sim::Controller* controller_;
    QLabel* caption_;
    SegmentedControl* mode_;
};

}  // namespace app
