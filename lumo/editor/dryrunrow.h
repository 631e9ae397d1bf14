#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class SwitchButton;

namespace lumo {

/// The switch of the dry run and, in place of its caption while it is on, the choice of its speed in welds.
/// Neither can be changed while anything runs: what runs keeps what it began with.
class DryRunRow : public QWidget {
    Q_OBJECT
public:
    explicit DryRunRow(QWidget* parent = nullptr);

private:
    void fillSpeeds();
    void showSpeed();
    void refresh();

    QLabel* caption_;
    SwitchButton* switch_;
    QComboBox* speed_;
};

}  // namespace lumo
