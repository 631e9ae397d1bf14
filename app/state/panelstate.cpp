#include "app/state/panelstate.h"

#include "app/clocktext.h"

#include <QCoreApplication>

namespace app {

/// Translation context of the texts.
struct StateText {
    Q_DECLARE_TR_FUNCTIONS(app::StateText)
};

namespace {

using Kind = PanelState::Kind;
using Laser = CellStatus::Laser;

bool runs(const CellStatus& status) {
    return status.busy || status.switchingOff || !status.waiting.isEmpty();
}

Kind kindOf(const CellStatus& status) {
    if (status.emergencyStop) {
        return Kind::EmergencyStop;
    }
    if (!status.faults.isEmpty() || status.lastError < 0) {
        return Kind::Fault;
    }
    if (status.laser != Laser::Off) {
        return Kind::LaserOn;
    }
    if (status.pausedLine >= 0) {
        return Kind::Paused;
    }
    if (runs(status)) {
        return Kind::Running;
    }
    if (status.listening) {
        return Kind::Listening;
    }
    if (status.ended && status.ended->reason == QLatin1String("finished")) {
        return Kind::Finished;
    }
    return status.power ? Kind::Ready : Kind::DrivesOff;
}

QString joined(QStringList parts) {
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

QString lineText(int line) {
    return line < 0 ? QString() : StateText::tr("第 %1 行").arg(line + 1);
}

QString projectText(const CellStatus& status) {
    return status.project.isEmpty() ? StateText::tr("没有打开的工程") : status.project;
}

QString laserText(Laser laser) {
    switch (laser) {
        case Laser::ByProgram:
            return StateText::tr("由程序打开");
        case Laser::ByStation:
            return StateText::tr("由工位打开");
        case Laser::ByHand:
            return StateText::tr("手动打开");
        case Laser::WithoutProgram:
            return StateText::tr("没有程序在运行");
        case Laser::Off:
            break;
    }
    return {};
}

QString wordOf(Kind kind, const CellStatus& status) {
    switch (kind) {
        case Kind::EmergencyStop:
            return StateText::tr("急停");
        case Kind::Fault:
            return StateText::tr("故障");
        case Kind::LaserOn:
            return StateText::tr("激光打开");
        case Kind::Paused:
            return StateText::tr("暂停 第 %1 行").arg(status.pausedLine + 1);
        case Kind::Running:
            return status.line < 0 ? StateText::tr("运行中")
                                   : StateText::tr("运行 第 %1 行").arg(status.line + 1);
        case Kind::Listening:
            return status.waitingStations > 0
                       ? StateText::tr("监听中（%1 个等待）").arg(status.waitingStations)
                       : StateText::tr("监听中");
        case Kind::Finished:
            return StateText::tr("已完成");
        case Kind::DrivesOff:
            return StateText::tr("驱动未上电");
        case Kind::Ready:
            break;
    }
    return StateText::tr("就绪");
}

/// An emergency stop or a fault hides the state of the laser.
QString litText(const CellStatus& status) {
    return status.laser == Laser::Off ? QString() : StateText::tr("激光打开");
}

QString faultText(const CellStatus& status) {
    const QString error =
        status.lastError < 0
            ? StateText::tr("机器人运动错误 -0x%1").arg(QString::number(-qint64(status.lastError), 16))
            : QString();
    return joined({litText(status), status.faults.join(StateText::tr("、")), error});
}

QString runText(const CellStatus& status) {
    const QString dry = status.dry ? StateText::tr("空运行") : QString();
    if (status.station) {
        return joined({dry, StateText::tr("工位"), status.project});
    }
    return joined({dry, status.step ? StateText::tr("单步") : QString(),
                   status.step ? status.project : projectText(status)});
}

QString detailOf(Kind kind, const CellStatus& status) {
    switch (kind) {
        case Kind::EmergencyStop:
            return joined({litText(status), StateText::tr("在手控器上复位")});
        case Kind::Fault:
            return faultText(status);
        case Kind::LaserOn:
            return joined({laserText(status.laser), runs(status) ? status.project : QString(),
                           runs(status) ? lineText(status.line) : QString()});
        case Kind::Paused:
            return joined(
                {projectText(status), status.pausedInWeld ? StateText::tr("焊缝未完成") : QString()});
        case Kind::Running:
            return runText(status);
        case Kind::Finished:
            return joined({status.ended->station.isEmpty() ? status.project : status.ended->station,
                           clockText(status.ended->ms), status.ended->welded});
        case Kind::Listening:
            return StateText::tr("工位");
        case Kind::DrivesOff:
        case Kind::Ready:
            break;
    }
    return projectText(status);
}

/// Faults of the equipment are shown on the monitor, those of a motion at its line.
Place placeOf(Kind kind, const CellStatus& status) {
    switch (kind) {
        case Kind::EmergencyStop:
        case Kind::DrivesOff:
            return Place::Pendant;
        case Kind::Fault:
            return status.faults.isEmpty() ? Place::Project : Place::Monitor;
        case Kind::LaserOn:
            if (status.laser == Laser::ByHand || status.laser == Laser::WithoutProgram) {
                return Place::Device;
            }
            return status.station ? Place::Stations : Place::Project;
        case Kind::Running:
            return status.station ? Place::Stations : Place::Project;
        case Kind::Listening:
            return Place::Stations;
        case Kind::Finished:
            return Place::Results;
        case Kind::Paused:
        case Kind::Ready:
            break;
    }
    return Place::Project;
}

}  // namespace

PanelState panelState(const CellStatus& status) {
    PanelState state;
    state.kind = kindOf(status);
    state.word = wordOf(state.kind, status);
    state.detail = detailOf(state.kind, status);
    state.place = placeOf(state.kind, status);
    if (state.place == Place::Project) {
        state.line = status.pausedLine >= 0 ? status.pausedLine : status.line;
    }
    return state;
}

StateLook lookOf(PanelState::Kind kind) {
    const QColor white(0xff, 0xff, 0xff), raised(0x3b, 0x50, 0x70), ink(0x17, 0x27, 0x3a);
    const QColor red(0xc5, 0x22, 0x1b);
    switch (kind) {
        case Kind::EmergencyStop:
            return {Sign::Octagon, red, white, QColor(0xff, 0xd1, 0x00)};
        case Kind::Fault:
            return {Sign::Triangle, QColor(0xf2, 0xb0, 0x1e), ink, {}};
        case Kind::LaserOn:
            return {Sign::Diamond, red, white, {}};
        case Kind::Paused:
            return {Sign::Bars, QColor(0xff, 0xf3, 0xd6), QColor(0x7a, 0x4b, 0x00), {}};
        case Kind::Running:
            return {Sign::Arrow, QColor(0x24, 0x6b, 0x4a), white, {}};
        case Kind::Listening:
            return {Sign::Waves, raised, white, {}};
        case Kind::Finished:
            return {Sign::Flag, white, ink, {}};
        case Kind::DrivesOff:
            return {Sign::Power, raised, white, {}};
        case Kind::Ready:
            break;
    }
    return {Sign::Ring, raised, white, {}};
}

}  // namespace app
