#pragma once

#include <QString>

namespace app {

class Scene;

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
void startSample(Scene& s);
/// Opens a project with this text.
void openText(Scene& s, const char* fileName, const char* text);

}  // namespace app
