#include "app/state/panelstate.h"

#include "app/clocktext.h"
#include "app/link/linktext.h"
#include "look/tokens.h"

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

}  // namespace

Kind stateKind(const CellStatus& status) {
    if (status.emergencyStop) {
        return Kind::EmergencyStop;
    }
    if (!status.linked || !status.faults.isEmpty() || status.lastError < 0) {
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

QString stateWord(Kind kind) {
    switch (kind) {
        case Kind::EmergencyStop:
            return QStringLiteral("emergency_stop");
        case Kind::Fault:
            return QStringLiteral("fault");
        case Kind::LaserOn:
            return QStringLiteral("laser_on");
        case Kind::Paused:
            return QStringLiteral("paused");
        case Kind::Running:
            return QStringLiteral("running");
        case Kind::Listening:
            return QStringLiteral("listening");
        case Kind::Finished:
            return QStringLiteral("finished");
        case Kind::DrivesOff:
            return QStringLiteral("drives_off");
        case Kind::Ready:
            break;
    }
    return QStringLiteral("ready");
}

namespace {

QString joined(QStringList parts) {
    parts.removeAll(QString());
    return parts.join(StateText::tr("，"));
}

/// "line 5 of 8".
QString lineText(int line, int lines) {
    if (line < 0) {
        return {};
    }
    return lines > line ? StateText::tr("第 %1 行，共 %2 行").arg(line + 1).arg(lines)
                        : StateText::tr("第 %1 行").arg(line + 1);
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

QString wordOf(Kind kind) {
    switch (kind) {
        case Kind::EmergencyStop:
            return StateText::tr("急停");
        case Kind::Fault:
            return StateText::tr("故障");
        case Kind::LaserOn:
            return StateText::tr("激光打开");
        case Kind::Paused:
            return StateText::tr("暂停");
        case Kind::Running:
            return StateText::tr("运行中");
        case Kind::Listening:
            return StateText::tr("监听中");
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
    return status.laser == Laser::Off ? QString()
           : status.linked            ? StateText::tr("激光打开")
                                      : StateText::tr("激光可能仍打开");
}

QString faultText(const CellStatus& status) {
    const QString error =
        status.lastError < 0
            ? StateText::tr("机器人运动错误 -0x%1").arg(QString::number(-qint64(status.lastError), 16))
            : QString();
    // The block is narrow: a reason that names the place says enough.
    const bool isEnough = !status.linkReason.place.isEmpty();
    const QString link = status.linked ? QString()
                         : isEnough    ? reasonText(status.linkReason)
                                       : unreachableText(status.lostEnd, status.linkReason);
    const QString faults = status.linked ? status.faults.join(StateText::tr("、")) : QString();
    return joined({link, litText(status), faults, error});
}

/// "dry run, station, seam, line 5 of 8".
QString runText(const CellStatus& status) {
    return joined({status.dry ? StateText::tr("空运行") : QString(),
                   status.station ? StateText::tr("工位") : QString(),
                   status.step ? StateText::tr("单步") : QString(),
                   status.station || status.step ? status.project : projectText(status),
                   lineText(status.line, status.lines)});
}

/// The laser of a program is where the program runs; who else lit it stands first.
QString litRunText(const CellStatus& status) {
    const bool byProgram = status.laser == Laser::ByProgram || status.laser == Laser::ByStation;
    return byProgram && runs(status)
               ? runText(status)
               : joined({laserText(status.laser), runs(status) ? runText(status) : QString()});
}

QString endText(const EndedRun& ended, const QString& project) {
    return joined({ended.station.isEmpty() ? project : ended.station,
                   ended.welded.isEmpty() ? clockText(ended.ms) : ended.welded});
}

/// The project and how long its program is.
QString readyText(const CellStatus& status) {
    return status.projectOpen && status.lines > 0
               ? joined({status.project, StateText::tr("%n 行", nullptr, status.lines)})
               : projectText(status);
}

QString detailOf(Kind kind, const CellStatus& status) {
    switch (kind) {
        case Kind::EmergencyStop:
            return joined({litText(status), StateText::tr("先复位急停，再上电")});
        case Kind::Fault:
            return faultText(status);
        case Kind::LaserOn:
            return litRunText(status);
        case Kind::Paused:
            return joined({projectText(status), lineText(status.pausedLine, status.lines),
                           status.pausedInWeld ? StateText::tr("焊缝未完成") : QString()});
        case Kind::Running:
            return runText(status);
        case Kind::Finished:
            return endText(*status.ended, status.project);
        case Kind::Listening:
            return status.waitingStations > 0 ? StateText::tr("%1 个工位等待").arg(status.waitingStations)
                                              : StateText::tr("没有工位等待");
        case Kind::DrivesOff:
        case Kind::Ready:
            break;
    }
    return readyText(status);
}

/// Faults of the equipment are shown on the monitor, those of a motion at its line.
Place placeOf(Kind kind, const CellStatus& status) {
    switch (kind) {
        case Kind::EmergencyStop:
        case Kind::DrivesOff:
            return Place::Rail;
        case Kind::Fault:
            if (!status.linked) {
                return Place::Rail;
            }
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

/// The page's bar names the project, too.
QString withoutProject(const QString& detail, const QString& project) {
    QStringList parts = detail.split(StateText::tr("，"));
    if (parts.size() > 1) {
        parts.removeOne(project);
    }
    return joined(parts);
}

}  // namespace

PanelState panelState(const CellStatus& status) {
    PanelState state;
    state.kind = stateKind(status);
    state.word = wordOf(state.kind);
    state.detail = detailOf(state.kind, status);
    state.shortDetail = withoutProject(state.detail, status.project);
    state.place = placeOf(state.kind, status);
    if (state.place == Place::Project) {
        state.line = status.pausedLine >= 0 ? status.pausedLine : status.line;
    }
    return state;
}

StateLook lookOf(PanelState::Kind kind) {
    switch (kind) {
        case Kind::EmergencyStop:
            return {"octagon", look::red, look::white, look::white, look::white, look::estop};
        case Kind::Fault:
            return {"warn", look::amber, look::ink, look::ink, look::ink};
        case Kind::LaserOn:
            return {"diamond", look::red, look::white, look::white, look::white};
        case Kind::Paused:
            return {"pause", look::amberTint, look::amberInk, look::amberInk, look::amberInk};
        case Kind::Running:
            return {"play", look::green, look::white, look::white, look::white};
        case Kind::Listening:
            return {"listening", look::navy2, look::white, look::fog, look::sky};
        case Kind::Finished:
            return {"flag", look::white, look::ink, look::ink, look::ink2};
        case Kind::DrivesOff:
            return {"power", look::navy2, look::white, look::fog, look::fog};
        case Kind::Ready:
            break;
    }
    return {"ring", look::navy2, look::white, look::fog, look::fog};
}

}  // namespace app
