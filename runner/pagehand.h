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

/// Works the pages of the panel as an operator's hand does: opens them from the navigation, and presses and
/// fills what is there by the names of the widgets. One gesture comes after another; a gesture waits, and
/// with it those behind it, while a box is open, and before a device's button until the page has followed
/// the outputs.
class PageHand : public QObject {
    Q_OBJECT
public:
    explicit PageHand(QObject* parent = nullptr);

    /// Both must outlive it.
    void setPanel(QWidget* panel, StationPage* stations);

    /// Why a row cannot be worked; empty when it can.
    QString portFault(int row) const;
    QString stationFault(int row) const;

    /// The keys of a scenario's entry "device", checked.
    void device(const QJsonObject& keys);
    void port(int row, bool enable);
    /// `fields`: as the station's record has them, checked.
    void station(int row, const QJsonObject& fields);

    /// A gesture is under way or waits for its turn.
    bool isBusy() const { return working_ || !gestures_.empty(); }
    /// Forgets the gestures that have not begun.
    void letGo();
    /// Whether a page could not be worked as it was told; standard error says why.
    bool hasFailed() const { return failed_; }

signals:
    /// The hand has done something.
    void released();

private:
    /// True when it is done, false when it is to be tried again.
    using Gesture = std::function<bool()>;
    void add(Gesture gesture);
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
    std::deque<Gesture> gestures_;
    QTimer again_;
    bool working_ = false;
    bool failed_ = false;
    bool gone_ = false;  ///< letGo() was called
};

}  // namespace run
