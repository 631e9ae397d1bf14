#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QTableWidget;
class QWidget;

namespace run {

/// The package's station page as hand and eye meet it: found by the names of its widgets, operated
/// with the mouse, read off its table.
class StationPage : public QObject {
    Q_OBJECT
public:
    explicit StationPage(QObject* parent = nullptr) : QObject(parent) {}

    /// Looks for the page below the panel. False when it has none; nothing else may be called then.
    bool find(QWidget* panel);

    /// Opens the page from the panel's navigation.
    void show();
    /// Opens the editor for the station of a row.
    void edit(int row);
    /// Presses the page's switch, unless it stands so already.
    void setMonitoring(bool on);
    bool isMonitoring() const;
    /// Projects that wait for their start, the one under way included.
    int queued() const;

    int count() const;
    QString name(int row) const;
    QString project(int row) const;

signals:
    /// The state text of a station (row from 0) changed.
    void stateChanged(int row, const QString& state);

private:
    void readStates();
    QString text(int row, int column) const;

    QWidget* page_ = nullptr;
    QWidget* navigation_ = nullptr;
    QWidget* switch_ = nullptr;
    QTableWidget* table_ = nullptr;
    QStringList states_;  ///< as they were read last
};

}  // namespace run
