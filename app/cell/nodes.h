#pragma once

#include <QString>

namespace app {

/// Nodes of the tree that the panel's cell view reads.
namespace node {
const QString power = QStringLiteral("kord.r.power");
const QString mode = QStringLiteral("kord.r.mode");
const QString robotState = QStringLiteral("kord.r.state");
const QString programState = QStringLiteral("lumo.execute.state");
const QString program = QStringLiteral("lumo.program");
const QString stationProgram = QStringLiteral("lumo.signalbind_program");
const QString projectToolset = QStringLiteral("lumo.toolset");
const QString executeLine = QStringLiteral("lumo.execute.line");
const QString currentLine = QStringLiteral("lumo.current.line");
const QString weldOpen = QStringLiteral("lumo.current.openmiddlecolse");
const QString pausePoint = QStringLiteral("lumo.current.pausepoint");
const QString weldSwitch = QStringLiteral("lumo.allWeldBtnstatus.weldbtn");
const QString handWeldSwitch = QStringLiteral("lumo.allWeldBtnstatus.handweldbtn");
const QString parameterSets = QStringLiteral("lumo.param");
const QString currentSet = QStringLiteral("lumo.cur_param");
const QString startTrigger = QStringLiteral("lumo.execute.trigger.start");
const QString onceTrigger = QStringLiteral("lumo.execute.trigger.once");
const QString ports = QStringLiteral("lumo.port");
const QString posture = QStringLiteral("sys.posture");
}  // namespace node

}  // namespace app
