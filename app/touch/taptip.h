#pragma once

#include <QObject>

class QWidget;

namespace app {

/// Shows by a tap what a mouse shows by resting: why a control is disabled, and what a text or a cell that
/// has no room says in full. A finger does not hover.
class TapTip : public QObject {
    Q_OBJECT
public:
    /// Watches every window of the application.
    explicit TapTip(QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace app
