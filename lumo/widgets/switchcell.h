#pragma once

#include <QWidget>

class QLabel;
class SwitchButton;

namespace lumo {

/// A switch with its caption, before it or over it. A press anywhere in the cell switches.
class SwitchCell : public QWidget {
    Q_OBJECT
public:
    explicit SwitchCell(QWidget* parent = nullptr);

    /// Takes them over. To be called once.
    void setParts(QLabel* caption, SwitchButton* button);
    /// Over the switch, which is a little smaller then; otherwise before it.
    void setCaptionOver(bool over);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] QSize switchSize() const;
    [[nodiscard]] QSize captionSize() const;
    void arrange();

    QLabel* caption_ = nullptr;
    SwitchButton* switch_ = nullptr;
    bool over_ = false;
};

}  // namespace lumo
