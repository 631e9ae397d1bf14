#include "module/settingsfile.h"

#include "module/host.h"
#include "module/jsonplace.h"
#include "module/keptfile.h"
#include "module/recordcheck.h"

#include <QFile>

#include <algorithm>
#include <iterator>

using mendo::ModuleManager;

namespace lumo {

namespace {

const QLatin1String treePaths[] = {key::port, key::param, key::signalsConfig};

/// Lists whose file was there but could not be read: what it holds is not in the tree.
bool isUnread[std::size(treePaths)] = {};

bool& unread(Settings list) {
    return isUnread[static_cast<int>(list)];
}

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
        model[field::time] = 0;
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

/// Rows that stand where a port of another kind belongs: after a row was lost or moved, for example.
void noteOtherKinds(CheckedRecords* rows) {
    const QList<ModuleObject*> ports = node(Settings::Ports)->cmobjs();
    for (int row = 0; row < qMin(rows->records.size(), ports.size()); ++row) {
        const QString own = ports[row]->c(field::type)->getString();
        const QJsonValue kind = rows->records[row].toObject().value(field::type);
        if (!kind.isUndefined() && !kind.isNull() && kind.toString() != own) {
            rows->note(row, QStringLiteral("'%1' is not %2").arg(field::type, own));
        }
    }
}

CheckedRecords check(Settings list, const QJsonArray& records) {
    const QJsonObject model = modelRecord(list);
    if (list != Settings::Ports) {
        return checkRecords(records, model, model);
    }
    CheckedRecords rows = checkRecords(records, model, QJsonObject());
    noteOtherKinds(&rows);
    return rows;
}

/// The number of the ports is fixed.
bool isComplete(Settings list, const QJsonArray& records) {
    return list != Settings::Ports || records.size() == node(Settings::Ports)->size();
}

bool isSound(Settings list, const QJsonValue& content) {
    if (isEmptyList(content)) {
        return true;
    }
    const QJsonArray records = content.toArray();
    return isRecordList(content) && isComplete(list, records) && check(list, records).faults.isEmpty();
}

/// Of a file that the file service has read before: it is a plain one.
QByteArray textOf(Settings list) {
    QFile file(settingsFile(list));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void report(Settings list, const TextPlace& place, const QString& reason) {
    emit m()->fileProblem(settingsFile(list), place.line, place.column, reason);
}

/// At the first record too many, or the last there is.
void reportCount(int rows) {
    const int ports = node(Settings::Ports)->size();
    report(Settings::Ports, elementPlace(textOf(Settings::Ports), qMin(ports, rows - 1)),
           QStringLiteral("there are %1 rows for %2 ports").arg(rows).arg(ports));
}

void reportFaults(Settings list, const CheckedRecords& checked) {
    const int others = checked.faults.size() - 1;
    const QString& first = checked.faults.first();
    report(list, elementPlace(textOf(list), checked.faults.firstKey()),
           others > 0 ? QStringLiteral("%1; faults in %2 more records").arg(first).arg(others) : first);
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
    unread(list) = content.isUndefined() && isThere(settingsFile(list));
    if (content.isUndefined()) {
        return;
    }
    if (!isEmptyList(content) && !isRecordList(content)) {
        report(list, contentPlace(textOf(list)), QStringLiteral("the file holds no list of records"));
        return;
    }
    const CheckedRecords checked = check(list, content.toArray());
    if (!isEmptyList(content) && !isComplete(list, content.toArray())) {
        reportCount(content.toArray().size());
    }
    if (!checked.faults.isEmpty()) {
        reportFaults(list, checked);
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
    const bool written = writeKeeping(settingsFile(list), content, [list](const QJsonValue& old) {
        return !unread(list) && isSound(list, old);
    });
    unread(list) = unread(list) && !written;
    return written;
}

}  // namespace lumo
