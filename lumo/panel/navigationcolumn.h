#pragma once

#include <QWidget>

namespace lumo {

/// The column with the buttons of the pages. Its width follows the window, not the package's page, whose
/// width changes when something opens beside it.
class NavigationColumn : public QWidget {
    Q_OBJECT
public:
    explicit NavigationColumn(QWidget* parent = nullptr);

    /// To be called when the window or the scale has changed.
    void fit();
};

}  // namespace lumo
