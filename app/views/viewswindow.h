#pragma once

#include <QMargins>
#include <QRect>
#include <QWidget>

class QTabWidget;

namespace app {

/// Geometry of a window beside another one: on its right, else on its left. Without room, over its left
/// side within `margins`, because the controls for running and stopping are on the right. If it would cover
/// `keepFree`, it ends above it; if it became too low by that, it ends on the left of it, provided that it
/// then covers at most the right margin of the other window. In screen coordinates.
QRect placeBeside(const QRect& other, const QRect& screen, int width, const QMargins& margins,
                  const QRect& keepFree = {});

/// The window beside the panel with path, signals, results and event log, one tab each. Closing it only
/// hides it.
class ViewsWindow : public QWidget {
    Q_OBJECT
public:
    static constexpr int fullWidth = 620;

    ViewsWindow();

    /// Takes ownership of the page.
    void addPage(QWidget* page, const QString& title);
    /// Shows a page; the first time places the window beside `panel`.
    void open(int page, const QWidget* panel);

signals:
    void opened(bool open);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QTabWidget* tabs_;
    bool placed_ = false;
};

}  // namespace app
