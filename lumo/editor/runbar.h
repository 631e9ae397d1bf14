#pragma once

#include <QFrame>

#include <optional>
#include <utility>

class FindingsButton;
class QLabel;
class SwitchButton;

namespace lumo {

class DryRunRow;
class SwitchCell;
class WrapToolButton;

/// The bar below the program: what starts, moves and stops it, the switches of welding, and the result of the
/// program's check. In a narrow page icons stand over words and captions over switches; a very narrow one
/// has two rows.
class RunBar : public QFrame {
    Q_OBJECT
public:
    struct Parts {
        WrapToolButton* start;
        WrapToolButton* point;
        WrapToolButton* stop;
        WrapToolButton* reset;
        QLabel* weldCaption;
        SwitchButton* weld;
        QLabel* handWeldCaption;
        SwitchButton* handWeld;
        DryRunRow* dry;
        FindingsButton* findings;
    };

    explicit RunBar(QWidget* parent = nullptr);

    /// The parts, children of the bar. To be called once.
    void setParts(const Parts& parts);
    /// At this width of the page, with the factor in force.
    [[nodiscard]] int heightFor(int width) const;

    /// How the parts stand in a width.
    struct Look {
        int start = 0;  ///< width of the start button
        bool wordsOver = false, captionsOver = false, shortResult = false, twoRows = false;
    };
    [[nodiscard]] Look lookFor(int width) const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] int neededWidth(const Look& look) const;
    [[nodiscard]] int buttonWidth(const WrapToolButton* button, bool wordsOver) const;
    void apply(const Look& look);
    void arrange();
    /// As arrange(), when a part needs another width than before.
    void arrangeAnew();
    void placeButtons(const Look& look, const QRect& row);
    void placeSwitches(const Look& look, const QRect& row);

    Parts parts_{};
    SwitchCell* weld_;
    SwitchCell* handWeld_;
    QFrame* rule_;
    /// The look that was last asked for: while the page is laid out, the same width is asked for many times.
    mutable std::optional<std::pair<int, Look>> known_;
};

}  // namespace lumo
