#include "campaign/scenarioreader.h"

#include "campaign/names.h"

namespace campaign {

namespace {

/// Reads members of one object into variables, which keep their values where a member is missing.
class Reader {
public:
    Reader(const QJsonObject& object, QString* problem) : object_(object), problem_(problem) {}

    void read(const char* name, int* value) const { *value = object_[QLatin1String(name)].toInt(*value); }
    void read(const char* name, bool* value) const { *value = object_[QLatin1String(name)].toBool(*value); }
    void read(const char* name, QString* value) const {
        *value = object_[QLatin1String(name)].toString(*value);
    }
    void read(const char* name, QJsonArray* value) const {
        *value = object_[QLatin1String(name)].toArray(*value);
    }
    void read(const char* name, QJsonObject* value) const {
        *value = object_[QLatin1String(name)].toObject(*value);
    }
    /// One of a few words.
    template <typename Choice>
    bool choose(const char* name, Choice* value, bool required = false) const {
        const QJsonValue word = object_[QLatin1String(name)];
        if ((word.isUndefined() && !required) || fromName(word.toString(), value)) {
            return true;
        }
        *problem_ = QStringLiteral("no \"%1\" is called \"%2\"").arg(QLatin1String(name), word.toString());
        return false;
    }

private:
    const QJsonObject& object_;
    QString* problem_;
};

bool readMoment(const QJsonObject& object, Moment* moment, QString* problem) {
    const Reader reader(object, problem);
    reader.read("ms", &moment->ms);
    reader.read("nth", &moment->nth);
    reader.read("fromDue", &moment->fromDue);
    reader.read("behind", &moment->behind);
    reader.read("early", &moment->early);
    reader.read("text", &moment->text);
    reader.read("port", &moment->port);
    return reader.choose("kind", &moment->kind) && reader.choose("hook", &moment->hook);
}

bool readAction(const QJsonObject& object, Action* action, QString* problem) {
    const Reader reader(object, problem);
    reader.read("number", &action->number);
    reader.read("mode", &action->mode);
    reader.read("on", &action->on);
    reader.read("text", &action->text);
    return reader.choose("kind", &action->kind, true) &&
           readMoment(object["moment"].toObject(), &action->moment, problem);
}

bool readPorts(const QJsonArray& names, QVector<int>* ports, QString* problem) {
    for (const QJsonValue name : names) {
        ports->append(portFromName(name.toString()));
        if (ports->last() < 0) {
            *problem = QStringLiteral("no port is called \"%1\"").arg(name.toString());
            return false;
        }
    }
    return true;
}

}  // namespace

bool scenarioFromJson(const QJsonObject& object, Scenario* scenario, QString* problem) {
    *scenario = Scenario();
    const Reader reader(object, problem);
    scenario->seed = static_cast<quint64>(object["seed"].toDouble());
    reader.read("program", &scenario->program);
    reader.read("otherProgram", &scenario->otherProgram);
    reader.read("sets", &scenario->sets);
    reader.read("writeMulti", &scenario->writeMulti);
    reader.read("automatic", &scenario->automatic);
    reader.read("weld", &scenario->weld);
    reader.read("handWeld", &scenario->handWeld);
    reader.read("axes", &scenario->axes);
    reader.read("dt", &scenario->dtMs);
    reader.read("endExecutor", &scenario->endExecutor);
    reader.read("endMs", &scenario->endMs);
    reader.read("projectOpen", &scenario->projectOpen);
    reader.read("stations", &scenario->stations);
    reader.read("projects", &scenario->projects);
    for (const QJsonValue element : object["actions"].toArray()) {
        scenario->actions.append(Action());
        if (!readAction(element.toObject(), &scenario->actions.last(), problem)) {
            return false;
        }
    }
    return reader.choose("stage", &scenario->stage) &&
           readPorts(object["disabledPorts"].toArray(), &scenario->disabledPorts, problem);
}

}  // namespace campaign
