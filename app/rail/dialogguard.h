#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace app {

/// Keeps what must always be seen clear of dialogs: a dialog that would lie over it is moved aside.
class DialogGuard : public QObject {
    Q_OBJECT
public:
    /// `parts` are of one window, the most important first: where a dialog is too large to leave all of them
    /// free, it leaves the first ones free.
    explicit DialogGuard(const QList<QWidget*>& parts, QObject* parent = nullptr);

    /// Filters the application's events for windows that appear and move.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keepClear();
    void moveAway(QWidget* dialog);

    QList<QPointer<QWidget>> parts_;
    bool due_ = false;
};

}  // namespace app
