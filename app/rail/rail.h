#pragma once

#include <QFrame>
#include <QPointer>

class QToolButton;
class QVBoxLayout;

namespace sim {
class Controller;
}

namespace app {

class StopBox;
class StopButton;

/// The column at the right of every page, which nothing covers: emergency stop, drive power, operating mode,
/// and keys that open the docks for jogging and for the tool's keys. A press leaves the keyboard where it
/// is; F9 moves it here and back.
class Rail : public QFrame {
    Q_OBJECT
public:
    explicit Rail(sim::Controller* controller, QWidget* parent = nullptr);

    StopButton* stop() const;
    /// A key at the bottom, with an icon over a word.
    QToolButton* addKey(const QString& name, const QString& icon, const QString& text);
    /// Gives the keyboard to the power switch, or to what releases the emergency stop.
    void takeFocus();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void toggleFocus();
    void fit();

    StopBox* stop_;
    QVBoxLayout* column_;
    QPointer<QWidget> focusBefore_;
};

}  // namespace app
