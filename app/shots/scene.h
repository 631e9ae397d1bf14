#pragma once

#include <QObject>
#include <QPixmap>
#include <QSize>
#include <QStringList>

#include <functional>
#include <memory>

class QWidget;

namespace sim {
class Controller;
}

namespace app {

class Panel;

/// The panel as somebody has it in front of them who takes pictures of it: does what a hand does, and
/// takes a picture of what is on the screen. The first thing that cannot be done ends the scene: what
/// follows is passed over. Needs virtual time.
class Scene : public QObject {
    Q_OBJECT
public:
    using Step = std::function<void()>;

    explicit Scene(Panel* panel);

    /// Begins anew: every dialog closed, the robot at rest without power, the editor's page shown.
    void reset(const QSize& size);
    /// The picture; null when none was taken.
    const QPixmap& picture() const { return picture_; }
    /// What could not be done; empty when all could.
    const QString& problem() const { return problem_; }

    // The hand. Widgets are looked for by object name in what is visible, the newest window first.
    void click(const QString& button);
    void selectRow(const QString& table, int row);
    /// Replaces what stands in a field.
    void type(const QString& lineEdit, const QString& text);
    /// Chooses a tab of the newest window that has some.
    void tab(int index);
    /// Presses the standard button of the newest dialog or message.
    void accept();
    /// Opens a project in the working directory.
    void openProject(const QString& fileName);
    /// Does something that long after now, inside whatever runs then.
    void after(int ms, const Step& step);
    /// Does something as soon as a statement is being run.
    void whenLineRuns(int line, const Step& step);
    /// Waits until no program runs and the robot stands still.
    void settle();

    sim::Controller* controller() const;
    Panel* panel() const { return panel_; }

    /// Takes the picture: the window with all that lies over it.
    void shoot();

private:
    template <typename Widget>
    Widget* find(const QString& name);
    void fail(const QString& problem);
    void closeDialogs();

    Panel* panel_;
    QPixmap picture_;
    QString problem_;
    std::unique_ptr<QObject> steps_;  ///< what after() and whenLineRuns() wait for
};

}  // namespace app
