#include "executor/runmessages.h"

#include "module/globals.h"
#include "module/host.h"
#include "program/motionerror.h"
#include "program/words.h"

#include <QCoreApplication>

namespace lumo {

namespace {

/// The robot's mode while controller or device cannot be reached.
const QLatin1String unknownMode("unknown");

/// The context of the executor's texts.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(lumo::Driver)
};

QString inWords(const char* english) {
    return QCoreApplication::translate("MotionError", english);
}

Way wayTo(int line, bool ofHand) {
    return ofHand ? Way::toLine(line) : Way();
}

}  // namespace

void RunMessage::show(QMessageBox::Icon icon) const {
    showMessage(icon, Text::tr("运行错误"), text, advice);
}

RunMessage RunMessage::notIdle() {
    QString reason = Text::tr("停止后的收尾尚未完成。");
    const bool ofHand = hand_or_signalbing != prog::runmode::byStation;
    int line = -1;
    if (m(prog::key::executeState)->getString() != prog::word::idle) {
        const bool isStep = hand_or_signalbing == prog::runmode::singleStep;
        line = m(isStep ? prog::key::executeLine : prog::key::currentLine)->getInt();
        reason = (ofHand ? Text::tr("第 %1 行正在执行。") : Text::tr("工位程序的第 %1 行正在执行。"))
                     .arg(line + 1);
    }
    return {Text::tr("当前不是空闲状态"),
            {reason, Text::tr("请等待其结束，或先按“停止”，然后再试。"), wayTo(line, ofHand)}};
}

RunMessage RunMessage::noLine(int count) {
    return {Text::tr("未选中启动行"),
            count == 0 ? Advice{Text::tr("程序没有任何行。"), Text::tr("请先添加指令。"), {}}
                       : Advice{QString(), Text::tr("请在程序中选中要开始的行，或要移动到的行。"), {}}};
}

RunMessage RunMessage::noPower() {
    if (m(prog::key::robotMode)->getString() == unknownMode) {
        return {Text::tr("机器人未上电"),
                {Text::tr("无法连接控制器或输入输出设备。"),
                 Text::tr("请等连接恢复，打开驱动电源，然后再试。"),
                 {}}};
    }
    return {Text::tr("机器人未上电"), {QString(), Text::tr("请松开急停，打开驱动电源，然后再试。"), {}}};
}

RunMessage RunMessage::robotMoves() {
    return {Text::tr("机器人正在运行中"),
            {Text::tr("机器人正在运动，例如正在点动。"), Text::tr("请等机器人停下，然后再试。"), {}}};
}

RunMessage RunMessage::noMove(int line) {
    return {Text::tr("单步只能运行运动指令"),
            {Text::tr("第 %1 行不是运动指令。").arg(line + 1), Text::tr("请选中有点位的行。"),
             Way::toLine(line)}};
}

RunMessage RunMessage::circle(prog::CircleFault fault, int line, bool ofHand) {
    return {(fault == prog::CircleFault::Coincident ? Text::tr("第 %1 行：整圆的点重合，无法确定圆")
                                                    : Text::tr("第 %1 行：整圆的三个点共线，无法确定圆"))
                .arg(line + 1),
            {QString(), Text::tr("请重新示教该行的点，使三个点分布在圆周上。"), wayTo(line, ofHand)}};
}

RunMessage RunMessage::motionError(int code, int line, bool ofHand) {
    const prog::MotionError& error = prog::motionError(code);
    const QString why = inWords(error.reason);
    QString reason = Text::tr("在返回中断点的途中：%1。").arg(why);
    if (line >= 0) {
        reason = (ofHand ? Text::tr("第 %1 行：%2。") : Text::tr("工位程序的第 %1 行：%2。"))
                     .arg(QString::number(line + 1), why);
    }
    return {Text::tr("机器人运动错误：-0x%1").arg(QString::number(-static_cast<qint64>(code), 16)),
            {reason, Text::tr("处理方法：%1。").arg(inWords(error.remedy)), wayTo(line, ofHand)}};
}

RunMessage RunMessage::notBack(double mm) {
    return {Text::tr("机器人正在运行中"),
            {Text::tr("机器人报告已返回，但焊枪距中断点仍有 %1 mm。").arg(mm, 0, 'f', 1),
             Text::tr("请检查返回路径，然后再按“开始”。"),
             {}}};
}

}  // namespace lumo
