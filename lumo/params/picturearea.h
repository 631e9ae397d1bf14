#pragma once

#include <QEvent>
#include <QScrollArea>

namespace lumo {

/// As high as the widget in it where the page has the room, else it scrolls.
class PictureArea final : public QScrollArea {
    Q_OBJECT
public:
    using QScrollArea::QScrollArea;

    [[nodiscard]] QSize sizeHint() const override {
        return widget() ? widget()->size() : QScrollArea::sizeHint();
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return {1, fontMetrics().height()}; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == widget() && event->type() == QEvent::Resize) {
            updateGeometry();
        }
        return QScrollArea::eventFilter(watched, event);
    }
};

}  // namespace lumo
