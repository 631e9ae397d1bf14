#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

namespace app {

class StatusWatcher;

/// Shows the sentences of a StatusWatcher in two lines at most, and a tick when nothing prevents welding.
/// The tooltip has the whole text.
class StatusLine : public QFrame {
    Q_OBJECT
public:
    /// `watch` must outlive it.
    explicit StatusLine(const StatusWatcher* watch, QWidget* parent = nullptr);

signals:
    void tapped();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void refresh();
    void fit();

    const StatusWatcher* watch_;
    QLabel* sign_;
    QLabel* text_;
};

}  // namespace app
