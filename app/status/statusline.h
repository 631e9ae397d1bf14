#pragma once

#include <QFrame>
#include <QStringList>
#include <QTimer>

class QLabel;

namespace app {

class StatusWatcher;
struct CellStatus;

/// Shows the sentences of a StatusWatcher in a line, or in two small ones. The sign before them is a tick
/// when all that a weld needs is well, a triangle when something is wrong, and else a ring.
class StatusLine : public QFrame {
    Q_OBJECT
public:
    /// `watch` must outlive it.
    explicit StatusLine(const StatusWatcher* watch, QWidget* parent = nullptr);

    /// Shows a text for some seconds instead of the sentences.
    void say(const QString& text);

signals:
    void tapped();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void showSign(const CellStatus& state);
    void dressAnew();
    void refresh();
    void fit();

    const StatusWatcher* watch_;
    QLabel* sign_;
    QLabel* text_;
    const char* shown_ = nullptr;  ///< the sign
    QString said_;                 ///< shown instead of the sentences; empty: nothing
    QTimer saying_;
};

}  // namespace app
