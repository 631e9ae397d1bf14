#pragma once

#include <QLatin1String>

#include <cstddef>

/// Names of the data tree, each defined once: paths, fields of records, and words stored as values. The
/// groups follow the tree.
namespace prog {

/// A constant QLatin1String. Its length is computed at compile time; not every compiler does that for
/// QLatin1String("…").
constexpr QLatin1String operator""_l1(const char* text, std::size_t size) {
    return QLatin1String(text, static_cast<int>(size));
}

namespace key {

// Subtree of the package.
constexpr QLatin1String lumo = "lumo"_l1;
constexpr QLatin1String defaults = "lumo.default"_l1;
constexpr QLatin1String defaultParam = "lumo.default.param"_l1;
constexpr QLatin1String defaultProgram = "lumo.default.program"_l1;
constexpr QLatin1String defaultSignalsConfig = "lumo.default.signalsConfig"_l1;
constexpr QLatin1String defaultToolset = "lumo.default.default_toolset"_l1;
constexpr QLatin1String port = "lumo.port"_l1;
constexpr QLatin1String param = "lumo.param"_l1;
constexpr QLatin1String signalsConfig = "lumo.signalsConfig"_l1;
constexpr QLatin1String curParam = "lumo.cur_param"_l1;
constexpr QLatin1String program = "lumo.program"_l1;
constexpr QLatin1String stationProgram = "lumo.signalbind_program"_l1;
constexpr QLatin1String weldSwitch = "lumo.allWeldBtnstatus.weldbtn"_l1;
constexpr QLatin1String handWeldSwitch = "lumo.allWeldBtnstatus.handweldbtn"_l1;
constexpr QLatin1String toolset = "lumo.toolset"_l1;
constexpr QLatin1String count = "lumo.count"_l1;
constexpr QLatin1String processTime = "lumo.processTime"_l1;
constexpr QLatin1String dialogProgram = "lumo.dialog.program"_l1;
constexpr QLatin1String dialogStatement = "lumo.dialog.statement"_l1;
constexpr QLatin1String keypad = "lumo.keypad"_l1;
/// What operators have switched by hand: `lit` and `off` of outputs (lumo/equipment/handlit.h). Not there
/// before the first time.
constexpr QLatin1String byHand = "lumo.byHand"_l1;

// Resume data.
constexpr QLatin1String current = "lumo.current"_l1;
constexpr QLatin1String currentLine = "lumo.current.line"_l1;
constexpr QLatin1String currentType = "lumo.current.programtype"_l1;
constexpr QLatin1String currentMoveType = "lumo.current.programmovetype"_l1;
constexpr QLatin1String currentProgram = "lumo.current.program"_l1;
constexpr QLatin1String currentStartPoint = "lumo.current.startpoint"_l1;
constexpr QLatin1String currentPausePoint = "lumo.current.pausepoint"_l1;
/// True between a laser opening and its closing, also during a pause. The misspelling is part of the files.
constexpr QLatin1String weldOpen = "lumo.current.openmiddlecolse"_l1;

// The executor.
constexpr QLatin1String execute = "lumo.execute"_l1;
constexpr QLatin1String executeLine = "lumo.execute.line"_l1;
constexpr QLatin1String executeState = "lumo.execute.state"_l1;
constexpr QLatin1String triggerStart = "lumo.execute.trigger.start"_l1;
constexpr QLatin1String triggerPause = "lumo.execute.trigger.pause"_l1;
constexpr QLatin1String triggerOnce = "lumo.execute.trigger.once"_l1;
constexpr QLatin1String executeDt = "lumo.execute.dt"_l1;
/// How far back on the welded path a weld opens that goes on after a stop, mm; read at the start.
constexpr QLatin1String executeOverlap = "lumo.execute.overlap"_l1;
/// How much of the path is welded already where the weld opens that was taken up last, mm. The executor
/// writes it.
constexpr QLatin1String executeOverlapped = "lumo.execute.overlapped"_l1;
/// Whether the next run or step is a dry run.
constexpr QLatin1String executeDry = "lumo.execute.dry"_l1;
/// Speed of a dry run in welds, % of the weld speed.
constexpr QLatin1String executeDrySpeed = "lumo.execute.drySpeed"_l1;
/// Whether a dry run is under way. The executor writes it.
constexpr QLatin1String executeDryRun = "lumo.execute.dryRun"_l1;

// The host's nodes.
constexpr QLatin1String robotPower = "kord.r.power"_l1;
constexpr QLatin1String robotState = "kord.r.state"_l1;
constexpr QLatin1String robotMode = "kord.r.mode"_l1;
constexpr QLatin1String posture = "sys.posture"_l1;
constexpr QLatin1String posturePlace = "sys.posture.trans"_l1;
constexpr QLatin1String sysInfo = "sys.info"_l1;
constexpr QLatin1String jointCount = "sys.info.joint_num"_l1;
constexpr QLatin1String defaultZone = "move.default_zone"_l1;
constexpr QLatin1String robot = "kord.r"_l1;
constexpr QLatin1String pages = "pel.navo.pages"_l1;
constexpr QLatin1String deviceIo = "device.io"_l1;
constexpr QLatin1String registerValues = "register.values"_l1;
constexpr QLatin1String registerList = "rova.robot.register._list"_l1;
constexpr QLatin1String toolList = "rova.project.tool._list"_l1;
constexpr QLatin1String wobjList = "rova.project.wobj._list"_l1;
/// Data node of the robot service: the tool and work object used for teaching and motion.
constexpr QLatin1String coordToolset = "pel.coord.toolset"_l1;

}  // namespace key

/// Fields of records.
namespace field {
constexpr QLatin1String type = "type"_l1;
constexpr QLatin1String note = "note"_l1;
constexpr QLatin1String execute = "execute"_l1;
constexpr QLatin1String point = "point"_l1;
constexpr QLatin1String point1 = "point1"_l1;
constexpr QLatin1String speed = "speed"_l1;
constexpr QLatin1String zone = "zone"_l1;
constexpr QLatin1String toolset = "toolset"_l1;
constexpr QLatin1String index = "index"_l1;
constexpr QLatin1String weldspeed = "weldspeed"_l1;
constexpr QLatin1String laserPower = "laserPower"_l1;
constexpr QLatin1String laserDutyCycle = "laserDutyCycle"_l1;
constexpr QLatin1String wireEnable = "wireEnable"_l1;
constexpr QLatin1String delaytime = "delaytime"_l1;
constexpr QLatin1String doName = "doName"_l1;
constexpr QLatin1String doType = "DO_type"_l1;
constexpr QLatin1String doReg = "DO_reg"_l1;
constexpr QLatin1String diName = "diName"_l1;
constexpr QLatin1String diType = "DI_type"_l1;
constexpr QLatin1String diReg = "DI_reg"_l1;
/// The state to wait for; that of an output is `value`.
constexpr QLatin1String value1 = "value1"_l1;
constexpr QLatin1String trans = "trans"_l1;
constexpr QLatin1String rot = "rot"_l1;
constexpr QLatin1String near = "near"_l1;
constexpr QLatin1String name = "name"_l1;
constexpr QLatin1String tag = "tag"_l1;
constexpr QLatin1String enable = "enable"_l1;
constexpr QLatin1String value = "value"_l1;
constexpr QLatin1String bias = "bias"_l1;
constexpr QLatin1String end = "end"_l1;
constexpr QLatin1String ref = "ref"_l1;
constexpr QLatin1String jointNum = "joint_num"_l1;
// Rows of a parameter set.
constexpr QLatin1String power = "power"_l1;
constexpr QLatin1String ratio = "ratio"_l1;
constexpr QLatin1String rw = "rw"_l1;
constexpr QLatin1String len = "len"_l1;
// A station.
constexpr QLatin1String stationName = "stationname"_l1;
constexpr QLatin1String filePath = "filePath"_l1;
constexpr QLatin1String time = "time"_l1;
constexpr QLatin1String status = "status"_l1;
}  // namespace field

/// Statement types, as a record's `type` holds them.
namespace statement {
constexpr QLatin1String moveJ = "moveJ"_l1;
constexpr QLatin1String moveL = "moveL"_l1;
constexpr QLatin1String moveC = "moveC"_l1;
constexpr QLatin1String moveCC = "moveCC"_l1;
constexpr QLatin1String open = "open"_l1;
constexpr QLatin1String close = "close"_l1;
constexpr QLatin1String param = "param"_l1;
constexpr QLatin1String setDO = "setDO"_l1;
constexpr QLatin1String waitDI = "waitDI"_l1;
constexpr QLatin1String delay = "delay"_l1;
}  // namespace statement

namespace word {
constexpr QLatin1String idle = "idle"_l1;
constexpr QLatin1String busy = "busy"_l1;
constexpr QLatin1String on = "on"_l1;
constexpr QLatin1String off = "off"_l1;
constexpr QLatin1String automatic = "auto"_l1;
constexpr QLatin1String io = "IO"_l1;
/// The kind of a signal that is a register bit.
constexpr QLatin1String registerKind = "register"_l1;
/// Kinds of ports.
constexpr QLatin1String portInput = "DI"_l1;
constexpr QLatin1String portOutput = "DO"_l1;
constexpr QLatin1String portAnalog = "AO"_l1;
constexpr QLatin1String falseText = "false"_l1;
constexpr QLatin1String trueText = "true"_l1;
}  // namespace word

/// Files in the working directory.
namespace file {
constexpr QLatin1String ports = "lumo_port.json"_l1;
constexpr QLatin1String parameters = "lumo_param.json"_l1;
constexpr QLatin1String stations = "lumo_signalsConfig.json"_l1;
}  // namespace file

/// The longest overlap that is taken, mm.
constexpr double mostOverlapMm = 20.0;

/// Values of the package's global `hand_or_signalbing`: what the next trigger starts.
namespace runmode {
constexpr int byHand = 0;
constexpr int byStation = 1;
constexpr int singleStep = 2;
}  // namespace runmode

/// What the executor waits for, as its property `waiting` tells it.
namespace waits {
constexpr QLatin1String move = "move"_l1;  ///< a motion's result
constexpr QLatin1String zone = "zone"_l1;  ///< the tool in the zone of the weld's last motion, or its result
constexpr QLatin1String preFlow = "preflow"_l1;
constexpr QLatin1String dwell = "dwell"_l1;
constexpr QLatin1String rampDown = "rampdown"_l1;
constexpr QLatin1String closeDelay = "closedelay"_l1;
constexpr QLatin1String postFlow = "postflow"_l1;
constexpr QLatin1String delay = "delay"_l1;
constexpr QLatin1String input = "input"_l1;
}  // namespace waits

/// Commands of the robot service.
namespace command {
constexpr QLatin1String moveJ = "move.j"_l1;
constexpr QLatin1String moveL = "move.l"_l1;
constexpr QLatin1String moveC = "move.c"_l1;
constexpr QLatin1String reset = "move.reset"_l1;
constexpr QLatin1String stop = "move.stop"_l1;
constexpr QLatin1String enough = "move.opr.enough"_l1;
constexpr QLatin1String registerWrite = "register.write"_l1;
constexpr QLatin1String registerWriteMulti = "register.write_multi"_l1;
constexpr QLatin1String outDo = "device.io.out.do"_l1;
}  // namespace command

}  // namespace prog
