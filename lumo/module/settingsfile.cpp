#include "module/settingsfile.h"

#include "module/host.h"
#include "module/jsonplace.h"
#include "module/keptfile.h"
#include "module/recordcheck.h"

#include <QFile>

#include <algorithm>

using mendo::ModuleManager;

namespace lumo {

namespace {

const QLatin1String treePaths[] = {key::port, key::param, key::signalsConfig};

ModuleObject* node(Settings list) {
    return m(treePaths[static_cast<int>(list)]);
}

/// A record with every field that is read, in the kind that it is read as.
QJsonObject modelRecord(Settings list) {
    if (list == Settings::Ports) {
        return {{field::name, QString()}, {field::enable, false}};
    }
    if (list == Settings::Stations) {
        QJsonObject model = m(key::defaultSignalsConfig)->exportToJson().toObject();
        model[QLatin1String("time")] = 0;
        return model;
    }
    QJsonObject model{{field::name, QString()}};
    const QList<ModuleObject*> definitions = m(key::defaultParam)->cmobjs();
    for (const ModuleObject* definition : definitions) {
        model[definition->r(field::name)->getString()] = 0;
    }
    return model;
}

bool isEmptyList(const QJsonValue& content) {
    return content.isArray() ? content.toArray().isEmpty() : content == QJsonObject();
}

/// Whether anything in the content can be a record.
bool isRecordList(const QJsonValue& content) {
    const QJsonArray elements = content.toArray();
    return std::any_of(elements.begin(), elements.end(),
                       [](const QJsonValue& element) { return element.isObject(); });
}

/// What the records are, and what is wrong with them: the number of the ports is fixed.
CheckedRecords check(Settings list, const QJsonArray& records) {
    const QJsonObject model = modelRecord(list);
    const bool areMerged = list == Settings::Ports;
    CheckedRecords checked = checkRecords(records, model, areMerged ? QJsonObject() : model);
    const int ports = node(Settings::Ports)->size();
    if (areMerged && checked.faults == 0 && records.size() != ports) {
        checked.faults = 1;
        checked.firstFault = qMin(ports, records.size() - 1);
        checked.reason = QStringLiteral("there are %1 rows for %2 ports").arg(records.size()).arg(ports);
    }
    return checked;
}

bool isSound(Settings list, const QJsonValue& content) {
    return isEmptyList(content) || (isRecordList(content) && check(list, content.toArray()).faults == 0);
}

void report(Settings list, const CheckedRecords& checked) {
    QFile file(settingsFile(list));
    const TextPlace place = file.open(QIODevice::ReadOnly)
                                ? elementPlace(file.readAll(), checked.firstFault)
                                : TextPlace();
    const QString others = checked.faults > 1
                               ? QStringLiteral("; faults in %1 more records").arg(checked.faults - 1)
                               : QString();
    emit m()->fileProblem(file.fileName(), place.line, place.column, checked.reason + others);
}

void mergePorts(QObject* sender, const QJsonArray& records) {
    const QList<ModuleObject*> ports = node(Settings::Ports)->cmobjs();
    for (int row = 0; row < qMin(records.size(), ports.size()); ++row) {
        const QJsonObject record = records[row].toObject();
        for (const QLatin1String field : {field::name, field::enable}) {
            const QJsonValue value = record.value(field);
            if (!value.isUndefined() && !value.isNull()) {
                ports[row]->set(sender, field, value.toVariant());
            }
        }
    }
}

}  // namespace

QString settingsFile(Settings list) {
    return settingsNames[static_cast<int>(list)] + QLatin1String(".json");
}

void loadSettings(QObject* sender, Settings list) {
    const QJsonValue content = ModuleManager::readFromJson(settingsFile(list));
    if (content.isUndefined()) {
        return;
    }
    if (!isEmptyList(content) && !isRecordList(content)) {
        emit m()->fileProblem(settingsFile(list), 0, 0, QStringLiteral("the file holds no list of records"));
        return;
    }
    CheckedRecords checked;
    if (content.isArray() && !isEmptyList(content)) {
        checked = check(list, content.toArray());
    }
    if (checked.faults > 0) {
        report(list, checked);
    }
    if (list == Settings::Ports) {
        mergePorts(sender, checked.records);
    } else {
        node(list)->loadJson(sender, checked.records);
    }
}

bool saveSettings(Settings list) {
    QJsonArray records = node(list)->exportToJson().toArray();
    if (list == Settings::Ports) {
        for (QJsonValueRef record : records) {
            QJsonObject row = record.toObject();
            row.remove(field::tag);
            record = row;
        }
    }
    const QJsonValue content = records.isEmpty() ? QJsonValue(QJsonObject()) : QJsonValue(records);
    return writeKeeping(settingsFile(list), content,
                        [list](const QJsonValue& old) { return isSound(list, old); });
}

}  // namespace lumo
