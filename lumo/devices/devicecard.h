#pragma once

#include "devices/signlabel.h"

#include <QFrame>

#include <vector>

class QGridLayout;
class QPushButton;

namespace lumo {

/// The card of one device: title and state at the left, beside them rows of set points and buttons. In a
/// narrow page title and state stand above the rows, and a row takes two lines.
class DeviceCard final : public QFrame {
    Q_OBJECT
    Q_PROPERTY(bool lit READ isLit)
public:
    explicit DeviceCard(QWidget* parent = nullptr);

    /// Makes what stands beside the rows. `title` is the form's, `icon` a name of look/icons. Called once,
    /// before any row is added.
    void make(QLabel* title, const QString& icon);
    /// Cells with a layout of their own.
    void addRow(const std::vector<QWidget*>& cells);
    /// Lays out what was added, for the width that the card has.
    void fold();

    void showState(Sign sign, const QString& state);
    /// More about the state; empty: nothing.
    void showDetail(const QString& detail);
    /// Whether the way to the ports is offered.
    void offerPorts(bool offered);
    /// A red frame: the laser is on.
    void setLit(bool lit);
    [[nodiscard]] bool isLit() const { return isLit_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// How the card is laid out.
    struct Form {
        int columns = 0;  ///< of cells
        bool isBeside = false;
        double factor = 0;  ///< of lengths

        bool operator==(const Form& other) const {
            return columns == other.columns && isBeside == other.isBeside && factor == other.factor;
        }
    };
    [[nodiscard]] Form formFor(int width) const;
    void layHead();
    void layCells(int firstRow, int firstColumn);
    QWidget* fillerAt(int column);

    Form form_;
    QGridLayout* grid_ = nullptr;  ///< null before make()
    QGridLayout* headGrid_ = nullptr;
    QWidget* head_ = nullptr;
    QLabel* icon_ = nullptr;
    QLabel* title_ = nullptr;
    SignLabel* state_ = nullptr;
    QLabel* detail_ = nullptr;
    QPushButton* toPorts_ = nullptr;
    QString iconName_;
    std::vector<std::vector<QWidget*>> rows_;
    std::vector<QWidget*> fillers_;  ///< by column
    bool isLit_ = false;
};

}  // namespace lumo
