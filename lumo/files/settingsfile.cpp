#include "files/settingsfile.h"

#include "files/jsonplace.h"
#include "files/keptfile.h"
#include "files/recordcheck.h"
#include "module/host.h"

#include <QFile>

#include <algorithm>
#include <iterator>
#include <optional>

using mendo::ModuleManager;

namespace lumo {

namespace {

constexpr QLatin1String notAList = "the file holds no list of records"_l1;
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

/// Why a file's rows cannot be those of the ports, in plain English, and the row that shows it; -1 for the
/// content as a whole.
struct Misfit {
    int row;
    QString reason;
};

/// Empty when the row is one of the port's kind.
QString kindFault(const QJsonValue& row, const ModuleObject* port) {
    if (!row.isObject()) {
        return QStringLiteral("this is no record");
    }
    const QString own = port->c(field::type)->getString();
    const QJsonValue kind = row.toObject().value(field::type);
    if (kind.isUndefined() || kind.isNull()) {
        return QStringLiteral("'%1' is missing").arg(field::type);
    }
    return kind.toString() == own ? QString() : QStringLiteral("'%1' is not %2").arg(field::type, own);
}

std::optional<Misfit> firstOfOtherKind(const QJsonArray& rows, const QList<ModuleObject*>& ports) {
    for (int row = 0; row < qMin(rows.size(), ports.size()); ++row) {
        const QString fault = kindFault(rows[row], ports[row]);
        if (!fault.isEmpty()) {
            return Misfit{row, fault};
        }
    }
    return std::nullopt;
}

/// The rows have their meaning by their places: where one was lost, those behind it are other ports'.
std::optional<Misfit> portsMisfit(const QJsonValue& content) {
    if (content == QJsonObject()) {
        return std::nullopt;  // the usual first start
    }
    if (!content.isArray()) {
        return Misfit{-1, notAList};
    }
    const QJsonArray rows = content.toArray();
    const QList<ModuleObject*> ports = node(Settings::Ports)->cmobjs();
    const std::optional<Misfit> other = firstOfOtherKind(rows, ports);
    if (rows.size() == ports.size()) {
        return other;
    }
    return Misfit{other ? other->row : qMin(ports.size(), rows.size() - 1),
                  QStringLiteral("there are %1 rows for %2 ports").arg(rows.size()).arg(ports.size())};
}

CheckedRecords check(Settings list, const QJsonArray& records) {
    return checkRecords(records, modelRecord(list));
}

bool isSound(Settings list, const QJsonValue& content) {
    if (list == Settings::Ports && portsMisfit(content)) {
        return false;
    }
    return isEmptyList(content) || (isRecordList(content) && check(list, content.toArray()).faults.isEmpty());
}

/// Of a file that the file service has read before: it is a plain one.
QByteArray textOf(Settings list) {
    QFile file(settingsFile(list));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void report(Settings list, const TextPlace& place, const QString& reason) {
    emit m()->fileProblem(settingsFile(list), place.line, place.column, reason);
}

void reportFaults(Settings list, const CheckedRecords& checked) {
    const int others = checked.faults.size() - 1;
    const QString& first = checked.faults.first();
    report(list, elementPlace(textOf(list), checked.faults.firstKey()),
           others > 0 ? QStringLiteral("%1; faults in %2 more records").arg(first).arg(others) : first);
}

/// What the outputs would drive is not known: nothing may.
void refusePorts(QObject* sender, const Misfit& misfit) {
    const QList<ModuleObject*> ports = node(Settings::Ports)->cmobjs();
    for (ModuleObject* port : ports) {
        port->set(sender, field::enable, false);
    }
    const QByteArray text = textOf(Settings::Ports);
    report(Settings::Ports, misfit.row < 0 ? contentPlace(text) : elementPlace(text, misfit.row),
           misfit.reason + QStringLiteral("; no port is in use"));
}

/// Of a file that fits, or holds no rows.
void mergePorts(QObject* sender, const QJsonArray& records) {
    const QList<ModuleObject*> ports = node(Settings::Ports)->cmobjs();
    for (int row = 0; row < records.size(); ++row) {
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
    if (list == Settings::Ports) {
        if (const auto misfit = portsMisfit(content)) {
            refusePorts(sender, *misfit);
            return;
        }
    }
    if (!isEmptyList(content) && !isRecordList(content)) {
        report(list, contentPlace(textOf(list)), notAList);
        return;
    }
    const CheckedRecords checked = check(list, content.toArray());
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
