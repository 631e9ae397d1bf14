#pragma once

#include <QAbstractButton>

namespace app {

/// The red emergency stop button on its yellow plate; drawn pressed while latched.
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
    void paintArrows(QPainter* painter, const QRectF& circle) const;

    bool latched_ = false;
};

}  // namespace app
