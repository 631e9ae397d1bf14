#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QObject>
#include <QString>

#include <optional>

namespace run {

class Project;
class StationPage;

/// Writes to the data tree what the panel's pages write when an operator presses their buttons. It is the
/// sender of these writes.
class TreeOperator : public QObject {
    Q_OBJECT
public:
    explicit TreeOperator(QObject* parent = nullptr) : QObject(parent) {}

    /// The package's exported run mode.
    void setRunMode(int* runMode) { runMode_ = runMode; }
    void setStationPage(StationPage* page) { stationPage_ = page; }

    /// As opening a project: program and, where the file has one, tool set.
    void loadProject(const QJsonValue& content);
    /// The same with a project of which only the text need be in memory.
    void loadProject(const Project& project);
    /// As the reset button.
    void resetResumeData();
    /// For the runs to come: the overlap of resumed welds, and whether they are dry runs. What is as usual is
    /// not written.
    void setUpRuns(double overlapMm, const std::optional<double>& dryPercent);
    void setWeld(bool on);
    void setHandWeld(bool on);
    /// The station page's switch.
    void setMonitoring(bool on);

    /// Lines of the program.
    static int lineCount();
    // As the editor's buttons. The lines must exist; a statement may also be inserted behind the last one.
    void insertStatement(int line, const QJsonObject& statement);
    void removeStatement(int line);
    void moveStatement(int line, int to);
    void enableStatement(int line, bool on);
    /// What the start button writes before the trigger. Lines count from 0.
    void prepareRun(int line);
    /// What the button for a single step writes before the trigger.
    void prepareStep();

    // These may return only when the run, step or closing that they cause is over.
    void start(int line);
    /// As a station starts its program, which stands in the tree.
    void startStation(int line);
    /// `withSender`: as the button for a single step, which runs motions only.
    void once(int line, bool withSender = true);
    void resume();
    void pause();
    /// Writes a node of the tree, which is made if it does not exist.
    void set(const QString& path, const QJsonValue& value);

    /// Whether one of them has not returned yet.
    bool isWriting() const { return writing_ > 0; }
    [[nodiscard]] static bool isIdle();

signals:
    /// One of them has returned.
    void written();

private:
    class Writing;
    void write(QLatin1String path, const QVariant& value);
    void trigger(QLatin1String trigger, int runMode, int line, QObject* sender);

    int* runMode_ = nullptr;
    StationPage* stationPage_ = nullptr;
    int writing_ = 0;
};

}  // namespace run
