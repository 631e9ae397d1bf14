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
}

namespace pictures {

/// Operates the panel as a user does, and takes pictures of what is on the screen. After the first step that
/// cannot be done the remaining steps do nothing. Needs virtual time.
class Scene : public QObject {
    Q_OBJECT
public:
    using Step = std::function<void()>;

    explicit Scene(app::Panel* panel);

    /// Begins anew: every dialog closed, the robot at rest without power, the editor's page shown.
    void reset(const QSize& size);
    /// The picture; null when none was taken.
    const QPixmap& picture() const { return picture_; }
    /// Which step could not be done; empty when all could.
    const QString& problem() const { return problem_; }

    /// What a person would object to in the picture.
    const QStringList& faults() const { return faults_; }

    // Input. Widgets are found by object name among the visible ones, the newest window first.
    void click(const QString& button);
    /// A tap of the finger, as on a field.
    void tap(const QString& widget);
    /// What a button says; empty where it is not there.
    [[nodiscard]] QString textOf(const QString& button);
    void selectRow(const QString& table, int row);
    /// Replaces the text of a field.
    void type(const QString& lineEdit, const QString& text);
    /// Presses a key in a widget.
    void key(const QString& widget, Qt::Key key);
    /// Sets a property of a widget.
    void set(const QString& widget, const char* property, const QVariant& value);
    /// Chooses a tab of the newest window that has tabs.
    void tab(int index);
    /// Presses OK or Yes in the newest dialog or message.
    void accept();
    /// Opens a project in the working directory.
    void openProject(const QString& fileName);
    /// Does a step after a time, from the event loop that runs then.
    void after(int ms, const Step& step);
    /// Does a step as soon as a statement is executed.
    void whenLineRuns(int line, const Step& step);
    /// Waits until no program runs and the robot stands still.
    void settle();

    sim::Controller* controller() const;
    app::Panel* panel() const { return panel_; }

    /// Takes the picture: the window with everything that lies over it.
    void shoot();

private:
    template <typename Widget>
    Widget* find(const QString& name);
    void fail(const QString& problem);
    void closeDialogs();

    app::Panel* panel_;
    QPixmap picture_;
    QString problem_;
    QStringList faults_;
    std::unique_ptr<QObject> steps_;  ///< owns the timers and connections of after() and whenLineRuns()
};

}  // namespace pictures
