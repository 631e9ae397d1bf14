#pragma once

#include <QHeaderView>

namespace lumo {

class RowGrid;

/// The header of the program's list: captions in the columns of their texts, in two lines where they are
/// long. A narrow list names the remark beside the parameters, under which it stands.
class ListHeader : public QHeaderView {
    Q_OBJECT
public:
    /// The grid must outlive it.
    ListHeader(const RowGrid& grid, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    /// Of the columns, from the first.
    [[nodiscard]] QStringList captions() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintCaption(QPainter* painter, int column) const;

    const RowGrid& grid_;
};

}  // namespace lumo
