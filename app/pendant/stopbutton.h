#pragma once

#include <QAbstractButton>

namespace app {

/// The red mushroom on its yellow plate. It acts when it is pressed, not when it is let go, and stays
/// down while latched.
class StopButton : public QAbstractButton {
    Q_OBJECT
public:
    static constexpr int side = 88;

    explicit StopButton(QWidget* parent = nullptr);

    void setLatched(bool latched);
    QSize sizeHint() const override { return QSize(side, side); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintArrows(QPainter* painter, const QRectF& place) const;

    bool latched_ = false;
};

}  // namespace app
