#pragma once

#include <QObject>

class QWidget;

namespace app {

class PendantWindow;

/// Keeps the pendant usable: no dialog blocks it or covers it.
class DialogGuard : public QObject {
    Q_OBJECT
public:
    /// Watches every window of the application.
    explicit DialogGuard(PendantWindow* pendant);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keepClear();
    void moveAway(QWidget* dialog);

    PendantWindow* pendant_;
    bool due_ = false;
};

}  // namespace app
