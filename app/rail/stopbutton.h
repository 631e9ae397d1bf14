#pragma once

#include <QAbstractButton>

namespace app {

/// The red emergency stop button on its yellow plate, with its key below; drawn pressed while latched.
class StopButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit StopButton(QWidget* parent = nullptr);

    void setLatched(bool latched);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintHead(QPainter* painter, const QRectF& head) const;

    bool latched_ = false;
};

}  // namespace app
