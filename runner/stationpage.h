#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QStringList>

class QTableWidget;
class QWidget;

namespace prog {
struct SignalFields;
}

namespace run {

/// Operates the package's station page: finds its widgets by name, uses the mouse, reads the table.
class StationPage : public QObject {
    Q_OBJECT
public:
    explicit StationPage(QObject* parent = nullptr) : QObject(parent) {}

    /// Finds the page below the panel. False when there is none; nothing else may be called then.
    bool find(QWidget* panel);

    /// Opens the page from the panel's navigation.
    void show();
    /// Opens the editor for the station of a row.
    void edit(int row);
    /// Presses the page's switch, if its state differs.
    void setMonitoring(bool on);
    bool isMonitoring() const;
    /// Projects that wait for their start, and the running one.
    int queued() const;
    /// The row whose project is started or runs; -1: none.
    int running() const;

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
    QStringList states_;  ///< as last read
};

/// Operates the package's page on which one station is edited.
class StationEditor {
public:
    /// `page` must outlive it.
    explicit StationEditor(QWidget* page) : page_(page) {}

    /// Fills the fields of a station's record into the page. Returns, in English, the first one that cannot
    /// be typed or chosen; empty when all could.
    QString fill(const QJsonObject& fields) const;
    /// Presses OK. False when the page stays open.
    bool accept() const;
    void cancel() const;

private:
    QString fillName(const QString& name) const;
    QString fillTime(const QString& time) const;
    QString chooseProject(const QString& file) const;
    QString chooseEdge(const char* combo, const QString& word) const;
    QString chooseSignal(const QJsonObject& fields, const prog::SignalFields& signal) const;
    QString choose(const QString& combo, const QString& text) const;
    template <class Widget>
    Widget* widget(const QString& name) const;

    QWidget* page_;
};

}  // namespace run
