#pragma once

#include <QObject>

namespace app {

/// Hears F1 in every window of the panel, also while a dialog blocks the panel's.
class HelpKey : public QObject {
    Q_OBJECT
public:
    explicit HelpKey(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void pressed();
};

}  // namespace app
