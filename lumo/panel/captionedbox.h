#pragma once

#include <QWidget>

class QComboBox;
class QLabel;

namespace lumo {

/// A selector with its caption inside, in small type above the current entry. A press anywhere opens it. The
/// form makes both as its children.
class CaptionedBox : public QWidget {
    Q_OBJECT
public:
    explicit CaptionedBox(QWidget* parent = nullptr);

    /// As wide as caption and current entry need.
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QComboBox* selector() const;
    [[nodiscard]] QLabel* caption() const;
};

}  // namespace lumo
