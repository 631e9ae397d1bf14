#pragma once

#include "widgets/wraptoolbutton.h"

namespace lumo {

/// A button of the navigation: icon over word; the chosen page's stands on a ground of its own, with a line
/// at the edge of the window.
class PageButton : public WrapToolButton {
    Q_OBJECT
public:
    explicit PageButton(QWidget* parent = nullptr);

    void setIconName(const QString& name);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return face().leastSize(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont captionFont() const;
};

}  // namespace lumo
