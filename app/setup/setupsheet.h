#pragma once

#include "app/setup/setupsteps.h"
#include "app/sheet/sheet.h"

#include <QTimer>

#include <functional>

namespace app {

/// The list of the first setup. It ticks itself while it is shown.
class SetupSheet : public Sheet {
    Q_OBJECT
public:
    /// `hasWelded` is asked every second.
    SetupSheet(std::function<bool()> hasWelded, QWidget* over);

signals:
    /// The operator wants to be led to what this button of the package opens.
    void wayAsked(const QString& button);
    /// The list is not to come by itself any more.
    void doneForGood();

private:
    void refresh();

    std::function<bool()> hasWelded_;
    QVector<QLabel*> signs_;  ///< a step each
    QTimer timer_;
};

}  // namespace app
