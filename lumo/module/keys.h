#pragma once

#include <QLatin1String>

/// The words of the data tree, each named once: paths, fields and the words that values hold.
/// The groups follow the tree. Reading defaults stand with the reader's accessor functions.
namespace lumo {

namespace key {

// Subtree of the package.
constexpr QLatin1String lumo("lumo");
constexpr QLatin1String defaults("lumo.default");
constexpr QLatin1String defaultParam("lumo.default.param");
constexpr QLatin1String defaultProgram("lumo.default.program");
constexpr QLatin1String defaultSignalsConfig("lumo.default.signalsConfig");
constexpr QLatin1String defaultToolset("lumo.default.default_toolset");
constexpr QLatin1String port("lumo.port");
constexpr QLatin1String param("lumo.param");
constexpr QLatin1String signalsConfig("lumo.signalsConfig");
constexpr QLatin1String curParam("lumo.cur_param");
constexpr QLatin1String program("lumo.program");
constexpr QLatin1String stationProgram("lumo.signalbind_program");
constexpr QLatin1String weldSwitch("lumo.allWeldBtnstatus.weldbtn");
constexpr QLatin1String handWeldSwitch("lumo.allWeldBtnstatus.handweldbtn");
constexpr QLatin1String toolset("lumo.toolset");
constexpr QLatin1String count("lumo.count");
constexpr QLatin1String processTime("lumo.processTime");
constexpr QLatin1String dialogProgram("lumo.dialog.program");
constexpr QLatin1String dialogStatement("lumo.dialog.statement");
constexpr QLatin1String keypad("lumo.keypad");

// Resume data.
constexpr QLatin1String currentLine("lumo.current.line");
constexpr QLatin1String currentType("lumo.current.programtype");
constexpr QLatin1String currentMoveType("lumo.current.programmovetype");
constexpr QLatin1String currentProgram("lumo.current.program");
constexpr QLatin1String currentStartPoint("lumo.current.startpoint");
constexpr QLatin1String currentPausePoint("lumo.current.pausepoint");
/// True between a laser opening and its closing, also across a pause. The odd spelling is stored in files.
constexpr QLatin1String weldOpen("lumo.current.openmiddlecolse");

// The executor.
constexpr QLatin1String executeLine("lumo.execute.line");
constexpr QLatin1String executeState("lumo.execute.state");
constexpr QLatin1String triggerStart("lumo.execute.trigger.start");
constexpr QLatin1String triggerPause("lumo.execute.trigger.pause");
constexpr QLatin1String triggerOnce("lumo.execute.trigger.once");
constexpr QLatin1String executeDt("lumo.execute.dt");

// The host's nodes.
constexpr QLatin1String robotPower("kord.r.power");
constexpr QLatin1String robotState("kord.r.state");
constexpr QLatin1String robotMode("kord.r.mode");
constexpr QLatin1String posture("sys.posture");
constexpr QLatin1String sysInfo("sys.info");
constexpr QLatin1String defaultZone("move.default_zone");
constexpr QLatin1String deviceIo("device.io");
constexpr QLatin1String registerValues("register.values");
constexpr QLatin1String registerList("rova.robot.register._list");
constexpr QLatin1String toolList("rova.project.tool._list");
constexpr QLatin1String wobjList("rova.project.wobj._list");

}  // namespace key

/// Fields of records.
namespace field {
constexpr QLatin1String type("type");
constexpr QLatin1String note("note");
constexpr QLatin1String execute("execute");
constexpr QLatin1String point("point");
constexpr QLatin1String point1("point1");
constexpr QLatin1String speed("speed");
constexpr QLatin1String zone("zone");
constexpr QLatin1String toolset("toolset");
constexpr QLatin1String index("index");
constexpr QLatin1String weldspeed("weldspeed");
constexpr QLatin1String laserPower("laserPower");
constexpr QLatin1String laserDutyCycle("laserDutyCycle");
constexpr QLatin1String wireEnable("wireEnable");
constexpr QLatin1String delaytime("delaytime");
constexpr QLatin1String trans("trans");
constexpr QLatin1String rot("rot");
constexpr QLatin1String near("near");
constexpr QLatin1String name("name");
constexpr QLatin1String tag("tag");
constexpr QLatin1String enable("enable");
constexpr QLatin1String value("value");
constexpr QLatin1String bias("bias");
constexpr QLatin1String end("end");
constexpr QLatin1String ref("ref");
}  // namespace field

/// Statement types, as a record's `type` holds them.
namespace statement {
constexpr QLatin1String moveJ("moveJ");
constexpr QLatin1String moveL("moveL");
constexpr QLatin1String moveC("moveC");
constexpr QLatin1String moveCC("moveCC");
constexpr QLatin1String open("open");
constexpr QLatin1String close("close");
constexpr QLatin1String param("param");
constexpr QLatin1String setDO("setDO");
constexpr QLatin1String waitDI("waitDI");
constexpr QLatin1String delay("delay");
}  // namespace statement

namespace word {
constexpr QLatin1String idle("idle");
constexpr QLatin1String busy("busy");
constexpr QLatin1String on("on");
constexpr QLatin1String automatic("auto");
constexpr QLatin1String io("IO");
constexpr QLatin1String falseText("false");
constexpr QLatin1String trueText("true");
}  // namespace word

/// Commands of the robot service.
namespace command {
constexpr QLatin1String moveJ("move.j");
constexpr QLatin1String moveL("move.l");
constexpr QLatin1String moveC("move.c");
constexpr QLatin1String reset("move.reset");
constexpr QLatin1String stop("move.stop");
constexpr QLatin1String enough("move.opr.enough");
constexpr QLatin1String registerWrite("register.write");
constexpr QLatin1String registerWriteMulti("register.write_multi");
constexpr QLatin1String outDo("device.io.out.do");
}  // namespace command

}  // namespace lumo
