#pragma once

#include <QToolButton>

class QMenu;

namespace app {

class ExampleLibrary;

/// A menu of the examples. Visible only while the program is empty and nothing runs, and when there are
/// examples.
class ExamplesButton : public QToolButton {
    Q_OBJECT
public:
    explicit ExamplesButton(const ExampleLibrary& library, QWidget* parent = nullptr);

    /// Connects to the program and the executor's state. Call it after the package has made its nodes.
    void connectToTree();

signals:
    void chosen(const QString& name);

private:
    void refresh();

    QMenu* menu_;
};

}  // namespace app
