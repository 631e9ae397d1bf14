#pragma once

#include <QWidget>

class QComboBox;
class SwitchButton;

namespace lumo {

class SwitchCell;

/// The switch of the dry run and, beside it while it is on, the choice of its speed in welds. Neither can be
/// changed while anything runs: what runs keeps what it began with.
class DryRunRow : public QWidget {
    Q_OBJECT
public:
    explicit DryRunRow(QWidget* parent = nullptr);

    void setCaptionOver(bool over);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// It needs another width.
    void resized();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fillSpeeds();
    void showSpeed();
    void refresh();

    SwitchCell* cell_;
    SwitchButton* switch_;
    QComboBox* speed_;
};

}  // namespace lumo
