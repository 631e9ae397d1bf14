#include "app/why/whytext.h"

#include <QCoreApplication>

namespace app {

/// The home of the texts.
struct WhyText {
    Q_DECLARE_TR_FUNCTIONS(app::WhyText)
};

namespace {

struct Wait {
    const char* kind;
    const char* text;  ///< %1: the time that is left
};

const Wait kWaits[] = {
    {"move", QT_TRANSLATE_NOOP("app::WhyText", "机器人正在运动")},
    {"zone", QT_TRANSLATE_NOOP("app::WhyText", "机器人正在运动到焊缝终点")},
    {"preflow", QT_TRANSLATE_NOOP("app::WhyText", "焊前送气，剩余 %1")},
    {"dwell", QT_TRANSLATE_NOOP("app::WhyText", "激光已打开，机器人停留，剩余 %1")},
    {"rampdown", QT_TRANSLATE_NOOP("app::WhyText", "激光功率正在下降，剩余 %1")},
    {"closedelay", QT_TRANSLATE_NOOP("app::WhyText", "激光已关闭，延时结束，剩余 %1")},
    {"postflow", QT_TRANSLATE_NOOP("app::WhyText", "焊后送气，剩余 %1")},
    {"delay", QT_TRANSLATE_NOOP("app::WhyText", "延时，剩余 %1")},
};

/// The text begins the sentence where there is no line to name.
QString atLine(const WhyState& state, const QString& text) {
    if (state.line < 0)
        return text.left(1).toUpper() + text.mid(1);
    const QString place = state.station ? WhyText::tr("工位程序第 %1 行：%2") : WhyText::tr("第 %1 行：%2");
    return place.arg(QString::number(state.line + 1), text);
}

QString inputText(const WhyState& state) {
    const QString what =
        state.awaited.isEmpty() ? state.input : QStringLiteral("%1 = %2").arg(state.input, state.awaited);
    const QString place = state.station ? WhyText::tr("工位程序第 %1 行：等待 %2，已等待 %3")
                                        : WhyText::tr("第 %1 行：等待 %2，已等待 %3");
    return place.arg(QString::number(state.line + 1), what, durationText(state.waitedMs));
}

QString runText(const WhyState& state) {
    if (state.waiting == QLatin1String("input"))
        return inputText(state);
    for (const Wait& wait : kWaits) {
        if (state.waiting != QLatin1String(wait.kind))
            continue;
        const QString text = WhyText::tr(wait.text);
        return atLine(state, state.leftMs < 0 ? text : text.arg(durationText(state.leftMs)));
    }
    if (state.busy)
        return atLine(state, WhyText::tr("正在执行"));
    return state.settling ? WhyText::tr("正在关闭激光、气体和送丝") : WhyText::tr("没有程序在运行");
}

QString weldText(const WhyState& state) {
    QStringList reasons;
    if (!state.power)
        reasons << WhyText::tr("驱动未上电");
    if (!state.weldSwitch)
        reasons << WhyText::tr("焊接开关已关闭");
    if (!state.automatic && !state.handWeldSwitch)
        reasons << WhyText::tr("手动模式下手动焊接开关已关闭");
    for (const QString& port : state.disabledPorts)
        reasons << WhyText::tr("端口“%1”已停用").arg(port);
    return state.isPermitted() ? WhyText::tr("允许焊接")
                               : WhyText::tr("不能焊接：%1").arg(reasons.join(WhyText::tr("、")));
}

/// Empty when it is not locked.
QString editingText(const WhyState& state) {
    if (!state.projectOpen)
        return WhyText::tr("编辑已锁定：没有打开的工程");
    if (state.busy)
        return WhyText::tr("编辑已锁定：程序正在运行");
    return state.power ? WhyText::tr("编辑已锁定：驱动已上电") : QString();
}

}  // namespace

bool WhyState::hasTime() const {
    return leftMs >= 0 || waiting == QLatin1String("input");
}

QStringList whyText(const WhyState& state) {
    QStringList sentences{runText(state), weldText(state)};
    const QString editing = editingText(state);
    if (!editing.isEmpty())
        sentences << editing;
    return sentences;
}

QString durationText(qint64 ms) {
    if (ms < 1000)
        return WhyText::tr("%1 毫秒").arg(ms);
    const qint64 seconds = ms / 1000;
    if (seconds < 60)
        return WhyText::tr("%1 秒").arg(seconds);
    return WhyText::tr("%1 分").arg(
        QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0')));
}

}  // namespace app
