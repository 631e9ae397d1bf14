#pragma once

#include "program/ports.h"

#include <QWidget>

#include <memory>
#include <optional>

class QLabel;

namespace lumo {
class SignLabel;
}

namespace Ui {
class StatusMonitorWidget;
}

/// The page that shows the state of the welding equipment and the laser's set points, and counts the
/// programs that were run to their end.
///
/// It reads the registers every 160 ms while its parent is visible, also behind another page. Without a
/// parent it never reads.
class StatusMonitorWidget final : public QWidget {
    Q_OBJECT
public:
    explicit StatusMonitorWidget(QWidget* parent = nullptr);
    ~StatusMonitorWidget() override;

    /// Shows the states of the equipment and the set points as they are now.
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    void placeCards();
    void showState(lumo::SignLabel* label, I_PORT port);
    void showCount(const QVariant& count);
    void showProcessTime(const QVariant& seconds);
    void countRun(const QVariant& state);
    void clearCounters();

    const std::unique_ptr<Ui::StatusMonitorWidget> ui_;
    std::optional<qint64> busySinceMs_;  ///< on the host's clock; empty before the first run
    bool allGood_ = true;                ///< no input in use has been false so far
    bool isLaidOut_ = false;             ///< when first shown
};

/// Writes the state of an input into a label: shut down when its port is not in use, else normal or abnormal.
/// An abnormal one clears `allGood`, which is never set.
void refreshTFLabel(bool& allGood, QLabel* label, I_PORT port);
