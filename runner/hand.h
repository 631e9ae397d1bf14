#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QObject>
#include <QString>

namespace run {

class StationPage;

/// Does what an operator's hand on the panel does, mostly to the data tree, and is the sender of its writes.
class Hand : public QObject {
    Q_OBJECT
public:
    explicit Hand(QObject* parent = nullptr) : QObject(parent) {}

    /// The package's exported run mode.
    void setRunMode(int* runMode) { runMode_ = runMode; }
    void setStationPage(StationPage* page) { stationPage_ = page; }

    /// As opening a project does: program and, where the file has one, tool set.
    void loadProject(const QJsonValue& content);
    /// As the reset button does.
    void resetResumeData();
    void setWeld(bool on);
    void setHandWeld(bool on);
    /// The station page's switch.
    void setMonitoring(bool on);

    /// Lines of the program.
    static int lineCount();
    // What the editor's buttons do to the program. The lines are there; behind the last one, too, to insert.
    void insertStatement(int line, const QJsonObject& statement);
    void removeStatement(int line);
    void moveStatement(int line, int to);
    void enableStatement(int line, bool on);
    /// What the start button writes before the trigger. Lines count from 0.
    void prepareRun(int line);
    /// What the button for a single step writes before the trigger.
    void prepareStep();

    // The following may return only when the run, step or closing that they cause is over.
    void start(int line);
    void once(int line);
    void resume();
    void pause();
    /// Writes any node of the tree, which is made where it is missing.
    void set(const QString& path, const QJsonValue& value);

    /// Whether one of them has not returned.
    bool isPressing() const { return pressing_ > 0; }
    [[nodiscard]] static bool isIdle();

signals:
    void released();

private:
    class Pressing;
    void write(const QString& path, const QVariant& value);
    void press(const QString& trigger, int runMode, int line);

    int* runMode_ = nullptr;
    StationPage* stationPage_ = nullptr;
    int pressing_ = 0;
};

}  // namespace run
