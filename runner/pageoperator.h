#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QTimer>

#include <deque>
#include <functional>

class QWidget;

namespace run {

class StationPage;

/// Operates the pages of the panel through their widgets, found by name: opens pages from the navigation,
/// presses and fills. Actions are done one after the other. While a message box is open, and until the device
/// page shows the outputs as they are, the next action waits.
class PageOperator : public QObject {
    Q_OBJECT
public:
    explicit PageOperator(QObject* parent = nullptr);

    /// `panel` and `stations` must outlive it.
    void setPanel(QWidget* panel, StationPage* stations);

    /// Why a row cannot be operated; empty when it can.
    QString portFault(int row) const;
    QString stationFault(int row) const;

    /// `keys`: a checked scenario entry "device".
    void device(const QJsonObject& keys);
    void port(int row, bool enable);
    /// `fields`: checked fields of a station's record.
    void station(int row, const QJsonObject& fields);

    /// Whether an action is being done or waits.
    bool isBusy() const { return working_ || !actions_.empty(); }
    /// Drops the actions that have not begun, for good.
    void dropActions();
    /// Whether an action failed; standard error says why.
    bool hasFailed() const { return failed_; }

signals:
    /// Some actions were done, or tried.
    void worked();

private:
    /// True when it is done, false to try again later.
    using Action = std::function<bool()>;
    void add(Action action);
    void work();
    bool pressDevice(const QJsonObject& keys, int* waitedMs);
    void fillFields(const QWidget* page, const QJsonObject& keys) const;
    void tickPort(int row, bool enable);
    void editStation(int row, const QJsonObject& fields);
    void fail(const QString& reason);
    QWidget* open(const char* navigation, const char* page);
    QWidget* shownPage(const char* className) const;

    QWidget* panel_ = nullptr;
    StationPage* stations_ = nullptr;
    std::deque<Action> actions_;
    QTimer again_;
    bool working_ = false;
    bool failed_ = false;
    bool dropped_ = false;  ///< dropActions() was called
};

}  // namespace run
