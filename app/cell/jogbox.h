#pragma once

#include <QGroupBox>

#include <array>

class QLabel;

namespace sim {
enum class JogAxis;
class Controller;
}  // namespace sim

namespace app {

class Choice;

/// Shows where the tool is and moves it by steps along and about the axes of the base, while the
/// drive is on and no program runs.
class JogBox : public QGroupBox {
    Q_OBJECT
public:
    /// The package's page has been made: the program's state is there to be followed.
    explicit JogBox(sim::Controller* controller, QWidget* parent = nullptr);

private:
    QWidget* makeReadout();
    QWidget* makeKeys();
    void jog(sim::JogAxis axis, int direction);
    void refreshPosture();
    void refreshKeys();
    QString obstacle() const;

    sim::Controller* controller_;
    std::array<QLabel*, 6> values_{};
    Choice* step_;
    QWidget* keys_;
    QLabel* answer_;
};

}  // namespace app
