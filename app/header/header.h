#pragma once

#include <QFrame>
#include <QHash>

class QHBoxLayout;
class QToolButton;

namespace app {

class Navigation;
class PartsBlock;
class RunStopButton;
class StateBlock;

/// The band at the top of the panel: the package's tab, the state, the counter of parts, what opens docks and
/// menu, and Stop.
class Header : public QFrame {
    Q_OBJECT
public:
    explicit Header(QWidget* parent = nullptr);

    Navigation* navigation() const { return navigation_; }
    StateBlock* state() const { return state_; }
    PartsBlock* parts() const { return parts_; }
    RunStopButton* stop() const { return stop_; }

    /// A button with an icon over a word, after those that are there.
    QToolButton* addButton(const QString& name, const QString& icon, const QString& text);
    /// Puts a widget right before Stop.
    void addBeforeStop(QWidget* widget);
    /// Takes the measures for a width of the window.
    void fitTo(int window);

protected:
    void changeEvent(QEvent* event) override;

private:
    Navigation* navigation_;
    StateBlock* state_;
    PartsBlock* parts_;
    RunStopButton* stop_;
    QHBoxLayout* row_;
    QHBoxLayout* buttons_;
    int window_ = 0;
};

}  // namespace app
