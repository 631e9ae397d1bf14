#pragma once

#include <QColor>
#include <QComboBox>

namespace lumo {

/// The name that is shown for a port's signal: an empty one as "not assigned".
[[nodiscard]] QString shownPortName(const QString& name);

/// The choice of a port's signal. It fills its cell and is drawn as a field of 40 px in it, so that the whole
/// cell can be pressed. Ignores the wheel, so that scrolling the table changes no assignment.
class PortNameBox final : public QComboBox {
    Q_OBJECT
public:
    /// `ground`: the colour round the field.
    PortNameBox(QRgb ground, QWidget* parent);

    /// Something is wrong with the choice.
    void setWarned(bool warned);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    void showPopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const QRgb ground_;
    bool isWarned_ = false;
    bool hasList_ = false;
};

}  // namespace lumo
