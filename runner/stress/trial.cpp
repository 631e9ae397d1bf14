#include "runner/stress/trial.h"

#include "runner/options.h"

#include <QJsonDocument>

#include <algorithm>
#include <iterator>

namespace run::stress {

namespace {

const QString programKey = QStringLiteral("program");
const QString settingsKey = QStringLiteral("settings");
const QString optionsKey = QStringLiteral("options");
const QString scenarioKey = QStringLiteral("scenario");
const QString untilKey = QStringLiteral("until");
const QString ruleKey = QStringLiteral("rule");
const QString textKey = QStringLiteral("text");
const QString atKey = QStringLiteral("at");
const QString msKey = QStringLiteral("ms");
const QString eventsKey = QStringLiteral("events");

QString lettersOf(const QString& text) {
    QString letters;
    std::copy_if(text.begin(), text.end(), std::back_inserter(letters), [](QChar c) { return c.isLetter(); });
    return letters;
}

}  // namespace

void Trial::applyTo(Options* call) const {
    call->mode = options.value(QStringLiteral("mode")).toString(call->mode);
    call->weld = options.value(QStringLiteral("weld")).toBool(call->weld);
    call->handWeld = options.value(QStringLiteral("handWeld")).toBool(call->handWeld);
    call->noWriteMulti = options.value(QStringLiteral("noWriteMulti")).toBool(call->noWriteMulti);
    call->line = options.value(QStringLiteral("line")).toInt(call->line);
    if (options.contains(QStringLiteral("once"))) {
        call->once = options.value(QStringLiteral("once")).toInt();
    }
    call->untilMs = untilMs > 0 ? untilMs : call->untilMs;
}

Trial Trial::from(const QJsonObject& object) {
    Trial trial;
    if (object.contains(programKey)) {
        trial.program = object.value(programKey).toArray();
    }
    trial.settings = object.value(settingsKey).toArray();
    trial.options = object.value(optionsKey).toObject();
    trial.scenario = object.value(scenarioKey).toArray();
    trial.untilMs = object.value(untilKey).toInt();
    return trial;
}

QJsonObject Trial::toJson() const {
    QJsonObject object{
        {settingsKey, settings}, {optionsKey, options}, {scenarioKey, scenario}, {untilKey, untilMs}};
    if (program) {
        object.insert(programKey, *program);
    }
    return object;
}

bool Verdict::isLike(const Verdict& other) const {
    return rule == other.rule && lettersOf(text) == lettersOf(other.text);
}

Verdict Verdict::from(const QByteArray& json) {
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    return {object.value(ruleKey).toString(), object.value(textKey).toString(),
            qint64(object.value(atKey).toDouble()), qint64(object.value(msKey).toDouble()),
            object.value(eventsKey).toString()};
}

QByteArray Verdict::toJson() const {
    return QJsonDocument(QJsonObject{{ruleKey, rule},
                                     {textKey, text},
                                     {atKey, double(atMs)},
                                     {msKey, double(ms)},
                                     {eventsKey, events}})
        .toJson(QJsonDocument::Compact);
}

}  // namespace run::stress
