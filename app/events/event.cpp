#include "app/events/event.h"

#include "app/clocktext.h"
#include "app/csvfield.h"
#include "app/link/linktext.h"

#include <QCoreApplication>
#include <QStringList>

namespace app {

/// Translation context of the texts.
struct EventText {
    Q_DECLARE_TR_FUNCTIONS(app::EventText)
};

namespace {

/// In the order of Event::Kind.
const struct {
    const char* word;
    const char* text;
} kinds[eventKinds] = {
    {"start", QT_TRANSLATE_NOOP("app::EventText", "启动")},
    {"finish", QT_TRANSLATE_NOOP("app::EventText", "完成")},
    {"pause", QT_TRANSLATE_NOOP("app::EventText", "暂停")},
    {"stop", QT_TRANSLATE_NOOP("app::EventText", "停机")},
    {"fault", QT_TRANSLATE_NOOP("app::EventText", "故障")},
    {"error", QT_TRANSLATE_NOOP("app::EventText", "错误")},
    {"laser", QT_TRANSLATE_NOOP("app::EventText", "激光")},
    {"save", QT_TRANSLATE_NOOP("app::EventText", "保存")},
    {"load", QT_TRANSLATE_NOOP("app::EventText", "打开")},
    {"role", QT_TRANSLATE_NOOP("app::EventText", "权限")},
    {"panel", QT_TRANSLATE_NOOP("app::EventText", "面板")},
};

/// In the order of Event::Origin.
const struct {
    const char* word;
    const char* text;
} origins[] = {
    {"", ""},
    {"hand", QT_TRANSLATE_NOOP("app::EventText", "手动")},
    {"step", QT_TRANSLATE_NOOP("app::EventText", "单步")},
    {"station", QT_TRANSLATE_NOOP("app::EventText", "工位")},
};

/// %1: the argument.
const struct {
    const char* word;
    const char* text;
} details[] = {
    {"emergency_stop", QT_TRANSLATE_NOOP("app::EventText", "急停已按下")},
    {"released", QT_TRANSLATE_NOOP("app::EventText", "急停已复位")},
    {"power", QT_TRANSLATE_NOOP("app::EventText", "运行中驱动断电")},
    {"motion", QT_TRANSLATE_NOOP("app::EventText", "机器人运动错误 -0x%1")},
    {"file", QT_TRANSLATE_NOOP("app::EventText", "文件：%1")},
    {"unready", QT_TRANSLATE_NOOP("app::EventText", "%1：异常")},
    {"ready", QT_TRANSLATE_NOOP("app::EventText", "%1：恢复正常")},
    {"lit", QT_TRANSLATE_NOOP("app::EventText", "%1：激光打开时出现故障")},
    {"on_by_hand", QT_TRANSLATE_NOOP("app::EventText", "手动打开")},
    {"off", QT_TRANSLATE_NOOP("app::EventText", "已关闭")},
    {"link_lost", QT_TRANSLATE_NOOP("app::EventText", "连接断开：%1")},
    {"link_back", QT_TRANSLATE_NOOP("app::EventText", "连接恢复：%1")},
    {"rule", QT_TRANSLATE_NOOP("app::EventText", "控制器违反规则：%1")},
    {"begun", QT_TRANSLATE_NOOP("app::EventText", "面板已启动，版本 %1")},
    {"ended", QT_TRANSLATE_NOOP("app::EventText", "面板已关闭")},
    {"integrator", QT_TRANSLATE_NOOP("app::EventText", "调试员已登录")},
    {"operator", QT_TRANSLATE_NOOP("app::EventText", "调试员已退出")},
    {"wrong_code", QT_TRANSLATE_NOOP("app::EventText", "密码错误")},
    {"code_set", QT_TRANSLATE_NOOP("app::EventText", "密码已设置")},
    {"code_removed", QT_TRANSLATE_NOOP("app::EventText", "密码已取消")},
};

}  // namespace

QString wordOf(Event::Kind kind) {
    return QLatin1String(kinds[int(kind)].word);
}

QString wordOf(Event::Origin origin) {
    return QLatin1String(origins[int(origin)].word);
}

Event::Kind kindFrom(const QString& word, Event::Kind otherwise) {
    for (int i = 0; i < eventKinds; ++i) {
        if (word == QLatin1String(kinds[i].word)) {
            return Event::Kind(i);
        }
    }
    return otherwise;
}

Event::Origin originFrom(const QString& word) {
    for (int i = 0; i < int(std::size(origins)); ++i) {
        if (word == QLatin1String(origins[i].word)) {
            return Event::Origin(i);
        }
    }
    return Event::Origin::None;
}

QString kindText(Event::Kind kind) {
    return EventText::tr(kinds[int(kind)].text);
}

QString originText(Event::Origin origin) {
    return origin == Event::Origin::None ? QString() : EventText::tr(origins[int(origin)].text);
}

QString detailText(const Event& event) {
    if (event.detail == QLatin1String("time")) {
        return clockText(event.argument.toLongLong());
    }
    for (const auto& detail : details) {
        if (event.detail == QLatin1String(detail.word)) {
            const QString text = EventText::tr(detail.text);
            const bool isRule = event.detail == QLatin1String("rule");
            return text.contains(QLatin1String("%1"))
                       ? text.arg(isRule ? brokenRuleText(event.argument) : event.argument)
                       : text;
        }
    }
    return event.argument;
}

QString timeText(const Event& event) {
    return event.at.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString searchText(const Event& event) {
    const QString line = event.line < 0 ? QString() : QString::number(event.line + 1);
    return QStringList{timeText(event),  kindText(event.kind), originText(event.origin), event.project, line,
                       detailText(event)}
        .join(QLatin1Char(' '));
}

QByteArray eventCsvHeader() {
    return "\xEF\xBB\xBFtime,event,by,project,line,detail,argument\r\n";
}

QByteArray eventCsvLine(const Event& event) {
    const QByteArrayList fields{timeText(event).toUtf8(),
                                wordOf(event.kind).toUtf8(),
                                wordOf(event.origin).toUtf8(),
                                csvField(event.project),
                                event.line < 0 ? QByteArray() : QByteArray::number(event.line + 1),
                                csvField(event.detail),
                                csvField(event.argument)};
    return fields.join(',') + "\r\n";
}

}  // namespace app
