#pragma once

#include <QFrame>

#include <vector>

class QGridLayout;
class QLabel;

namespace lumo {

/// A titled card of tiles, each a caption over a value. It takes as many tiles a row as its width has room
/// for.
class TileCard final : public QFrame {
    Q_OBJECT
public:
    explicit TileCard(QWidget* parent = nullptr);

    /// `tool` stands at the right of the title; may be null. Called once, first.
    void make(QLabel* title, QWidget* tool, int leastTilePx);
    /// `unit` stands behind the value; may be null.
    void addTile(QLabel* caption, QLabel* value, QLabel* unit = nullptr);
    /// Lays out the tiles for the width that the card has.
    void fold();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] int columnsFor(int width) const;

    QGridLayout* grid_ = nullptr;  ///< null before make()
    QLabel* title_ = nullptr;
    QWidget* tool_ = nullptr;
    std::vector<QFrame*> tiles_;
    int leastTilePx_ = 0;  ///< at factor 1
    int columns_ = 0;      ///< laid out
    double factor_ = 0;    ///< of the lengths that are laid out
};

}  // namespace lumo
