#pragma once

#include <QFrame>
#include <QHash>
#include <QIcon>

class QPushButton;

namespace lumo {

/// A row of buttons, maybe with a title. Where it is too narrow for all words, the buttons give up their
/// icons, then their large type and margins.
class FoldingBar final : public QFrame {
    Q_OBJECT
public:
    explicit FoldingBar(QWidget* parent = nullptr);

    /// Gives a button of the bar an icon of look/icons and, where it is the page's main button, its colours.
    void dress(QPushButton* button, const char* icon, bool isPrimary = false);

    /// To be called after something else was put into the row.
    void fold();

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    enum class Fold { Open, WithoutIcons, Tight };

    [[nodiscard]] int neededWidth(Fold fold) const;
    void space();
    void apply(Fold fold);

    QHash<QPushButton*, QIcon> icons_;
    Fold shown_ = Fold::Open;
};

}  // namespace lumo
