#pragma once

#include "module/host.h"

#include <QJsonArray>
#include <QObject>
#include <QStackedWidget>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <memory>

class LumoExecutor;

namespace bench {

/// A typical program: every twentieth line opens a weld, every twentieth closes it, the others are moves.
QJsonArray weldProgram(int lines);
/// A program of moves only, which are released as one batch.
QJsonArray moveProgram(int lines);

/// A controller that writes the result of each motion in the next pass of the event loop, or some ms later.
class PromptRobot : public QObject {
public:
    PromptRobot();
    int answerMs = 0;
    /// Called for every write of a register (name, bias, value) or of an output (name, 0, value).
    std::function<void(const QString& name, int bias, int value)> written;

private:
    void onIssued(const KordCall& call);
    void answer();

    QStringList queue_;
    int first_ = 0;
    QTimer next_;
};

/// The package with its real tree and executor on the process's event dispatcher: power on, mode auto, all
/// ports assigned, one parameter set, a robot that answers at once.
class WeldCell : public QObject {
public:
    WeldCell();
    ~WeldCell() override;

    void load(const QJsonArray& program);
    /// Sets a field of the parameter set, in ms or percent.
    void setParam(const char* field, double value);
    /// Runs the program from its first line; returns when the run is over.
    void run();

    [[nodiscard]] QStackedWidget* center() const { return center_.get(); }
    PromptRobot robot;

private:
    void assignPorts();

    QTemporaryDir folder_;
    std::unique_ptr<QStackedWidget> center_;
};

}  // namespace bench
