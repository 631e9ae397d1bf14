#pragma once

#include "editor/runfollower.h"

#include <QTimer>
#include <QWidget>

namespace lumo {

/// Beside the program while it cannot be edited: the line that runs, how far its seam is welded, the values
/// in force, the seams of the part, and why editing is locked. It only reads. While a program runs it looks
/// ten times a second, as long as it is visible.
class RunPanel : public QWidget {
    Q_OBJECT
public:
    explicit RunPanel(QWidget* parent = nullptr);

    [[nodiscard]] const RunView& shown() const { return view_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct ValueRow {
        QString caption, value, unit;
    };
    void refresh();
    void watch();
    [[nodiscard]] QVector<ValueRow> values() const;
    [[nodiscard]] QString lockText() const;
    [[nodiscard]] QRect band(int top, int height) const;
    /// Each paints from `top` on and gives the place below it.
    int paintTitle(QPainter* painter, int top) const;
    int paintProgress(QPainter* painter, int top) const;
    int paintValues(QPainter* painter, int top) const;
    void paintSeams(QPainter* painter, int top, int bottom) const;
    void paintSeamRow(QPainter* painter, const QRect& row, int seam) const;
    int paintLock(QPainter* painter) const;

    RunFollower* run_;
    RunView view_;
    QTimer look_;
};

}  // namespace lumo
