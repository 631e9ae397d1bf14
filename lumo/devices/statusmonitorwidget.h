#pragma once

#include "equipment/ports.h"

#include <QWidget>

#include <memory>
#include <optional>

class QLabel;

namespace Ui {
class StatusMonitorWidget;
}

/// The page that shows the state of the welding equipment and the laser's set points, and counts the
/// programs that were run to their end.
///
/// It reads the registers every 160 ms while its parent is visible, whichever page of it is in front;
/// without a parent never.
class StatusMonitorWidget final : public QWidget {
    Q_OBJECT
public:
    explicit StatusMonitorWidget(QWidget* parent = nullptr);
    ~StatusMonitorWidget() override;

    /// Brings the states of the equipment and the set points up to date.
    void refresh();

private:
    void showState(QLabel* label, I_PORT port);
    void showCount(const QVariant& count);
    void showProcessTime(const QVariant& seconds);
    void countRun(const QVariant& state);
    void clearCounters();

    const std::unique_ptr<Ui::StatusMonitorWidget> ui_;
    std::optional<qint64> busySinceMs_;  ///< by the host's clock; none before the first run
    bool allGood_ = true;                ///< no input in use has read false so far
};

/// Writes the state of an input into a label: shut down when its port is not in use, else normal or
/// abnormal. An abnormal one clears the flag; nothing sets it.
void refreshTFLabel(bool& allGood, QLabel* label, I_PORT port);
