#pragma once

#include <QMargins>
#include <QRect>
#include <QWidget>

class QTabWidget;

namespace app {

/// Where a window of a width goes that is to be seen together with another one: beside it, on the right
/// or else on the left; where there is no room, over its left side within `margins`, because what runs
/// and stops a program is usually on the right. It ends above `keepFree`, if it gets not too low by that,
/// else it ends on the left of it, if it covers no more of the other window than its right margin.
/// Geometries in the screen's coordinates.
QRect placeBeside(const QRect& other, const QRect& screen, int width, const QMargins& margins,
                  const QRect& keepFree = {});

/// The window of the views of the cell, beside the panel's: path and signals, a tab each. Closing it
/// hides it.
class ViewsWindow : public QWidget {
    Q_OBJECT
public:
    static constexpr int fullWidth = 620;

    ViewsWindow();

    /// Takes the page over.
    void addPage(QWidget* page, const QString& title);
    /// Opens the window at a page, the first time beside `panel`.
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
