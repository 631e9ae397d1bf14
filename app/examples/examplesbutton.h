#pragma once

#include <QToolButton>

class QMenu;

namespace app {

class ExampleShelf;

/// Offers the examples while nothing is in the way: no program is open and none runs. Hidden otherwise, and
/// where no examples came along.
class ExamplesButton : public QToolButton {
    Q_OBJECT
public:
    explicit ExamplesButton(const ExampleShelf& shelf, QWidget* parent = nullptr);

    /// Follows the program and the executor: call it when the package has made its part of the tree.
    void follow();

signals:
    void chosen(const QString& name);

private:
    void refresh();

    QMenu* menu_;
};

}  // namespace app
