#pragma once

#include <QString>

#include <vector>

namespace pictures {

class Scene;

/// One picture: its name, and the steps that lead to it from a panel that was reset. `go` takes the
/// picture before it returns, or has arranged for it to be taken while a program runs.
struct Stop {
    const char* name;
    void (*go)(Scene&);
};

/// Every page, dialog and message of the panel. Stops that need a panel without an open project come first.
const std::vector<Stop>& stops();

// The stops by what they show, in the order in which they are visited.
std::vector<Stop> panelStops();
std::vector<Stop> projectStops();
std::vector<Stop> editorStops();
std::vector<Stop> runStops();
std::vector<Stop> statusStops();
std::vector<Stop> parameterStops();
std::vector<Stop> portStops();
std::vector<Stop> stationStops();
std::vector<Stop> deviceStops();
std::vector<Stop> noticeStops();
std::vector<Stop> sheetStops();
std::vector<Stop> viewStops();
std::vector<Stop> railStops();
std::vector<Stop> touchStops();

/// Rows of the sample project.
enum SampleRow {
    MoveJ = 0,
    Open = 2,
    MoveL = 3,
    Param = 4,
    MoveC = 5,
    Close = 7,
    MoveCC = 9,
    SetDo = 10,
    WaitDi = 11,
    SetRegister = 12,
    WaitRegister = 13,
    Delay = 14
};

const QString table = QStringLiteral("tableWidget");
const QString sets = QStringLiteral("tblWgtGroup");
const QString sampleFile = QStringLiteral("seam.json");

// Steps that several stops share.
void press(Scene& s, const char* button);
void power(Scene& s);
/// Runs the sample project from its first line until the program has ended.
void startSample(Scene& s);
/// Writes a project file with this text and opens it.
void openText(Scene& s, const char* fileName, const char* text);

}  // namespace pictures
