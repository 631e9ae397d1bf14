#include "app/status/statustext.h"

#include "app/clocktext.h"
#include "app/link/linktext.h"
#include "program/motionerror.h"
#include "program/words.h"

#include <QCoreApplication>

namespace app {

/// Translation context of the texts.
struct StatusText {
    Q_DECLARE_TR_FUNCTIONS(app::StatusText)
};

namespace {

struct Wait {
    QLatin1String kind;
    const char* text;  ///< %1: remaining time
};

const Wait waits[] = {
    {prog::waits::move, QT_TRANSLATE_NOOP("app::StatusText", "机器人正在运动")},
    {prog::waits::zone, QT_TRANSLATE_NOOP("app::StatusText", "机器人正在运动到焊缝终点")},
    {prog::waits::preFlow, QT_TRANSLATE_NOOP("app::StatusText", "前吹气，剩余 %1")},
    {prog::waits::dwell, QT_TRANSLATE_NOOP("app::StatusText", "激光已打开，机器人停留，剩余 %1")},
    {prog::waits::rampDown, QT_TRANSLATE_NOOP("app::StatusText", "激光功率正在下降，剩余 %1")},
    {prog::waits::closeDelay, QT_TRANSLATE_NOOP("app::StatusText", "激光已关闭，延时结束，剩余 %1")},
    {prog::waits::postFlow, QT_TRANSLATE_NOOP("app::StatusText", "后吹气，剩余 %1")},
    {prog::waits::delay, QT_TRANSLATE_NOOP("app::StatusText", "延时，剩余 %1")},
};

/// Adds the line to the text; without a line, the text starts with a capital letter.
QString atLine(const CellStatus& state, const QString& text) {
    if (state.line < 0) {
        return text.left(1).toUpper() + text.mid(1);
    }
    const QString place =
        state.station ? StatusText::tr("工位程序第 %1 行：%2") : StatusText::tr("第 %1 行：%2");
    return place.arg(QString::number(state.line + 1), text);
}

QString inputText(const CellStatus& state) {
    const QString what =
        state.awaited.isEmpty() ? state.input : QStringLiteral("%1 = %2").arg(state.input, state.awaited);
    const QString place = state.station ? StatusText::tr("工位程序第 %1 行：等待 %2，已等待 %3")
                                        : StatusText::tr("第 %1 行：等待 %2，已等待 %3");
    return place.arg(QString::number(state.line + 1), what, durationText(state.waitedMs));
}

QString runText(const CellStatus& state) {
    if (state.waiting == prog::waits::input) {
        return inputText(state);
    }
    for (const Wait& wait : waits) {
        if (state.waiting != wait.kind) {
            continue;
        }
        const QString text = StatusText::tr(wait.text);
        return atLine(state, state.leftMs < 0 ? text : text.arg(durationText(state.leftMs)));
    }
    return state.busy ? atLine(state, StatusText::tr("正在执行"))
                      : StatusText::tr("正在关闭激光、气体和送丝");
}

/// "Finished, 0:20, 300.0 of 300.0 mm welded". Of a pause only what was welded: the line is told before.
QString endedText(const EndedRun& run, bool isPaused) {
    QStringList parts;
    if (!isPaused) {
        parts << (run.station.isEmpty() ? run.words : run.station + QStringLiteral(": ") + run.words)
              << clockText(run.ms);
    }
    parts << run.welded;
    if (run.violations > 0) {
        parts << StatusText::tr("超出限值：%1").arg(run.violations);
    }
    parts.removeAll(QString());
    return parts.join(StatusText::tr("，"));
}

QString idleText(const CellStatus& state) {
    if (state.pausedLine < 0) {
        const bool isPause = state.ended && state.ended->reason == QLatin1String("paused");
        return state.ended && !isPause ? endedText(*state.ended, false) : StatusText::tr("没有程序在运行");
    }
    const QString paused =
        (state.pausedInWeld ? StatusText::tr("在第 %1 行暂停，焊缝未完成") : StatusText::tr("在第 %1 行暂停"))
            .arg(state.pausedLine + 1);
    const QString welded = state.ended ? endedText(*state.ended, true) : QString();
    return welded.isEmpty() ? paused : paused + StatusText::tr("，") + welded;
}

/// Empty when the laser is off.
QString laserText(CellStatus::Laser laser) {
    switch (laser) {
        case CellStatus::Laser::ByProgram:
            return StatusText::tr("激光已由程序打开");
        case CellStatus::Laser::ByStation:
            return StatusText::tr("激光已由工位程序打开");
        case CellStatus::Laser::ByHand:
            return StatusText::tr("激光已手动打开");
        case CellStatus::Laser::WithoutProgram:
            return StatusText::tr("激光已打开，但没有程序在运行");
        case CellStatus::Laser::Off:
            break;
    }
    return QString();
}

QString portText(const PortProblem& trouble) {
    switch (trouble.kind) {
        case PortProblem::NotAssigned:
            return StatusText::tr("端口“%1”未分配").arg(trouble.port);
        case PortProblem::NoSuchSignal:
            return StatusText::tr("端口“%1”分配到不存在的 %2").arg(trouble.port, trouble.signal);
        case PortProblem::OutOfUse:
            break;
    }
    return StatusText::tr("端口“%1”未启用").arg(trouble.port);
}

QString listed(const QStringList& things) {
    return things.join(StatusText::tr("、"));
}

QStringList reasonsAgainstWelding(const CellStatus& state) {
    QStringList reasons;
    for (const auto& ports : {state.laserPorts, state.gasPorts}) {
        for (const PortProblem& trouble : ports) {
            reasons << portText(trouble);
        }
    }
    if (!state.power) {
        reasons << StatusText::tr("驱动未上电");
    }
    if (!state.weldSwitch) {
        reasons << StatusText::tr("焊接开关已关闭");
    }
    if (!state.automatic && !state.handWeldSwitch) {
        reasons << StatusText::tr("手动模式下手动焊接开关已关闭");
    }
    return reasons;
}

/// Empty where another sentence says why not: equipment is at fault, or a link is lost, and with it power and
/// mode.
QString weldText(const CellStatus& state) {
    if (!state.linked) {
        return {};
    }
    if (state.dry) {
        return StatusText::tr("空运行：激光、气体和送丝保持关闭");
    }
    const QString reasons = listed(reasonsAgainstWelding(state));
    if (!state.isPermitted()) {
        return StatusText::tr("不能焊接：%1").arg(reasons);
    }
    if (!reasons.isEmpty()) {
        return StatusText::tr("焊接没有保护气：%1").arg(reasons);
    }
    return state.faults.isEmpty() ? StatusText::tr("允许焊接") : QString();
}

/// Empty for a program without findings.
QString findingsText(const CellStatus& state) {
    QStringList counts;
    if (state.errors > 0) {
        counts << StatusText::tr("%n 个错误", nullptr, state.errors);
    }
    if (state.warnings > 0) {
        counts << StatusText::tr("%n 个警告", nullptr, state.warnings);
    }
    return counts.isEmpty() ? QString() : StatusText::tr("程序：%1").arg(listed(counts));
}

QString stationsText(const CellStatus& state) {
    return state.waitingStations > 0
               ? StatusText::tr("正在监听工位，%1 个等待启动").arg(state.waitingStations)
               : StatusText::tr("正在监听工位");
}

/// Empty when editing is not locked.
QString editingText(const CellStatus& state) {
    if (!state.projectOpen) {
        return StatusText::tr("编辑已锁定：没有打开的工程");
    }
    if (state.busy) {
        return StatusText::tr("编辑已锁定：程序正在运行");
    }
    return state.power ? StatusText::tr("编辑已锁定：驱动已上电") : QString();
}

}  // namespace

bool CellStatus::hasTime() const {
    return leftMs >= 0 || waiting == prog::waits::input;
}

bool CellStatus::isWrong() const {
    return emergencyStop || !linked || !faults.isEmpty() || !laserPorts.isEmpty() || !gasPorts.isEmpty() ||
           lastError != 0 || errors > 0 || laser == Laser::ByHand || laser == Laser::WithoutProgram ||
           (ended && ended->violations > 0);
}

QStringList statusText(const CellStatus& state) {
    const bool runs = state.busy || state.switchingOff || !state.waiting.isEmpty();
    QStringList sentences;
    if (state.emergencyStop) {
        sentences << StatusText::tr("急停已按下");
    }
    if (!state.linked) {
        sentences << unreachableText(state.lostEnd, state.linkReason);
    }
    const bool isUnseen = !state.linked && state.laser != CellStatus::Laser::Off;
    sentences << (isUnseen ? StatusText::tr("激光可能仍打开：看不到它的输出") : laserText(state.laser));
    if (state.linked && !state.faults.isEmpty()) {  // else the inputs are not known
        sentences << StatusText::tr("设备异常：%1").arg(listed(state.faults));
    }
    if (state.lastError < 0) {
        sentences << StatusText::tr("上次运行失败：机器人运动错误 -0x%1（%2）")
                         .arg(QString::number(-qint64(state.lastError), 16),
                              QCoreApplication::translate("MotionError",
                                                          prog::motionError(state.lastError).reason));
    }
    if (runs) {
        sentences << runText(state);
    }
    sentences << weldText(state);
    if (!runs) {
        sentences << idleText(state);
    }
    sentences << findingsText(state);
    if (state.listening) {
        sentences << stationsText(state);
    }
    sentences << editingText(state);
    sentences.removeAll(QString());
    return sentences;
}

QString durationText(qint64 ms) {
    if (ms < 1000) {
        return StatusText::tr("%1 毫秒").arg(ms);
    }
    const qint64 seconds = ms / 1000;
    if (seconds < 60) {
        return StatusText::tr("%1 秒").arg(seconds);
    }
    return StatusText::tr("%1 分").arg(
        QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0')));
}

}  // namespace app
