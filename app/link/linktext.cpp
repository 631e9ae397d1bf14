#include "app/link/linktext.h"

#include <QCoreApplication>

#include <iterator>

namespace app {

/// Translation context of the texts.
struct LinkText {
    Q_DECLARE_TR_FUNCTIONS(app::LinkText)
};

namespace {

/// In the order of bridge::Rule.
const struct {
    const char* word;
    const char* text;
} rules[] = {
    {"unknown_result", QT_TRANSLATE_NOOP("app::LinkText", "返回了没有指令的运动结果")},
    {"second_result", QT_TRANSLATE_NOOP("app::LinkText", "同一运动返回了两个结果")},
    {"stopped_result", QT_TRANSLATE_NOOP("app::LinkText", "已停止的运动返回了结果")},
    {"early_result", QT_TRANSLATE_NOOP("app::LinkText", "运动开始前返回了结果")},
    {"result_order", QT_TRANSLATE_NOOP("app::LinkText", "运动结果的顺序错误")},
    {"results_together", QT_TRANSLATE_NOOP("app::LinkText", "同一毫秒内返回了两个结果")},
    {"posture_missing", QT_TRANSLATE_NOOP("app::LinkText", "两个结果之间没有位置")},
    {"late_state", QT_TRANSLATE_NOOP("app::LinkText", "最后一个结果返回时机器人仍在运动")},
};

}  // namespace

QString reasonText(const bridge::LinkReason& reason) {
    using Kind = bridge::LinkReason::Kind;
    const QString ms = QString::number(reason.ms);
    switch (reason.kind) {
        case Kind::NoConnection:
            return LinkText::tr("无法连接 %1（%2）").arg(reason.place, reason.detail);
        case Kind::UnknownHost:
            return LinkText::tr("网络中找不到 %1").arg(reason.place);
        case Kind::Refused:
            return LinkText::tr("%1 拒绝连接：没有运行，或地址不对").arg(reason.place);
        case Kind::Closed:
            return LinkText::tr("%1 断开了连接").arg(reason.place);
        case Kind::Lost:
            return LinkText::tr("与 %1 的连接中断（%2）").arg(reason.place, reason.detail);
        case Kind::NoAnswer:
            return LinkText::tr("%1 没有应答").arg(reason.place);
        case Kind::TooSlow:
            return LinkText::tr("%1 应答太慢，写入已等待 %2 ms").arg(reason.place, ms);
        case Kind::NoHeartbeat:
            return LinkText::tr("%1 在 %2 ms 内没有收到心跳，已关闭输出").arg(reason.place, ms);
        case Kind::StaysOn:
            return LinkText::tr("%1 没有关闭输出 %2").arg(reason.place, reason.detail);
        case Kind::Cut:
            return LinkText::tr("电缆断开");
        case Kind::Words:
        case Kind::None:
            break;
    }
    return reason.detail;
}

QString unreachableText(bridge::LinkEnd end, const bridge::LinkReason& reason) {
    const QString what =
        end == bridge::LinkEnd::Robot ? LinkText::tr("无法连接控制器") : LinkText::tr("无法连接输入输出设备");
    return reason.isEmpty() ? what : LinkText::tr("%1：%2").arg(what, reasonText(reason));
}

QString brokenRuleText(bridge::Rule rule) {
    return LinkText::tr(rules[int(rule)].text);
}

QString ruleWord(bridge::Rule rule) {
    return QLatin1String(rules[int(rule)].word);
}

QString brokenRuleText(const QString& word) {
    for (int i = 0; i < int(std::size(rules)); ++i) {
        if (word == QLatin1String(rules[i].word)) {
            return brokenRuleText(bridge::Rule(i));
        }
    }
    return word;
}

}  // namespace app
