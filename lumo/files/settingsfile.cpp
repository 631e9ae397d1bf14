#include "files/settingsfile.h"

#include "files/recordcheck.h"
#include "module/host.h"

#include <algorithm>
#include <iterator>
#include <optional>

using mendo::FileProblem;
using mendo::JsonText;
using mendo::ModuleManager;
using Kind = FileProblem::Kind;

namespace lumo {

namespace {

const QLatin1String treePaths[] = {key::port, key::param, key::signalsConfig};

/// Lists whose file is there but could not be read: its content is not in the tree, so it must be kept.
bool isUnread[std::size(treePaths)] = {};

bool& unread(Settings list) {
    return isUnread[static_cast<int>(list)];
}

ModuleObject* node(Settings list) {
    return m(treePaths[static_cast<int>(list)]);
}

/// A record with every field that is read, each with a value of its kind.
QJsonObject modelRecord(Settings list) {
    if (list == Settings::Ports) {
        return {{field::name, QString()}, {field::enable, false}};
    }
    if (list == Settings::Stations) {
        QJsonObject model = m(key::defaultSignalsConfig)->exportToJson().toObject();
        model[field::time] = 0;
        return model;
    }
    QJsonObject model{{field::name, QString()}, {field::note, QString()}};
    const QList<ModuleObject*> definitions = m(key::defaultParam)->cmobjs();
    for (const ModuleObject* definition : definitions) {
        model[definition->r(field::name)->getString()] = 0;
    }
    return model;
}

bool isEmptyList(const QJsonValue& content) {
    return content.isArray() ? content.toArray().isEmpty() : content == QJsonObject();
}

/// Whether at least one element can be a record.
bool isRecordList(const QJsonValue& content) {
    const QJsonArray elements = content.toArray();
    return std::any_of(elements.begin(), elements.end(),
                       [](const QJsonValue& element) { return element.isObject(); });
}

/// Why a file's rows cannot be those of the ports, and the row that shows it; -1 for the content as a whole.
struct Misfit {
    int row;
    FileProblem::Reason reason;
};

/// Why the row does not fit the port's kind; empty if it does.
std::optional<FileProblem::Reason> kindFault(const QJsonValue& row, const ModuleObject* port) {
    if (!row.isObject()) {
        return FileProblem::Reason{Kind::NoRecord};
    }
    const QString own = port->c(field::type)->getString();
    const QJsonValue kind = row.toObject().value(field::type);
    if (kind.isUndefined() || kind.isNull()) {
        return FileProblem::Reason{Kind::FieldMissing, {field::type}};
    }
    return kind.toString() == own
               ? std::nullopt
               : std::make_optional(FileProblem::Reason{Kind::FieldDiffers, {field::type, own}});
}

std::optional<Misfit> firstOfOtherKind(const QJsonArray& rows, const QList<ModuleObject*>& ports) {
    for (int row = 0; row < qMin(rows.size(), ports.size()); ++row) {
        if (const auto fault = kindFault(rows[row], ports[row])) {
            return Misfit{row, *fault};
        }
    }
    return std::nullopt;
}

/// A row means a port by its position: where one was lost, those behind it are other ports'.
std::optional<Misfit> portsMisfit(const QJsonValue& content) {
    if (content == QJsonObject()) {
        return std::nullopt;  // the usual first start
    }
    if (!content.isArray()) {
        return Misfit{-1, {Kind::NoRecordList}};
    }
    const QJsonArray rows = content.toArray();
    const QList<ModuleObject*> ports = node(Settings::Ports)->cmobjs();
    const std::optional<Misfit> other = firstOfOtherKind(rows, ports);
    if (rows.size() == ports.size()) {
        return other;
    }
    return Misfit{other ? other->row : qMin(ports.size(), rows.size() - 1),
                  {Kind::WrongRowCount, {QString::number(rows.size()), QString::number(ports.size())}}};
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

void report(Settings list, const mendo::TextPlace& place, const QVector<FileProblem::Reason>& reasons) {
    emit m()->fileProblem({settingsFile(list), place, reasons});
}

void reportFaults(Settings list, const JsonText& text, const CheckedRecords& checked) {
    QVector<FileProblem::Reason> reasons{checked.faults.first()};
    const int others = checked.faults.size() - 1;
    if (others > 0) {
        reasons.append({Kind::MoreRecords, {QString::number(others)}});
    }
    report(list, text.place(checked.faults.firstKey()), reasons);
}

/// It is not known what the outputs would drive: none may be used.
void refusePorts(QObject* sender, const JsonText& text, const Misfit& misfit) {
    const QList<ModuleObject*> ports = node(Settings::Ports)->cmobjs();
    for (ModuleObject* port : ports) {
        port->set(sender, field::enable, false);
    }
    report(Settings::Ports, text.place(misfit.row), {misfit.reason, {Kind::NoPortInUse}});
}

/// `records` are as many as the ports, or none.
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
    const std::optional<JsonText> text = ModuleManager::readJsonText(settingsFile(list));
    unread(list) = !text && !mendo::isMissing(settingsFile(list));
    if (!text) {
        return;
    }
    const QJsonValue& content = text->value();
    if (list == Settings::Ports) {
        if (const auto misfit = portsMisfit(content)) {
            refusePorts(sender, *text, *misfit);
            return;
        }
    }
    if (!isEmptyList(content) && !isRecordList(content)) {
        report(list, text->place(), {{Kind::NoRecordList}});
        return;
    }
    const CheckedRecords checked = check(list, content.toArray());
    if (!checked.faults.isEmpty()) {
        reportFaults(list, *text, checked);
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
    const bool written = ModuleManager::writeToJson(
        settingsFile(list), content, true,
        [list](const QJsonValue& old) { return !unread(list) && isSound(list, old); });
    unread(list) = unread(list) && !written;
    return written;
}

}  // namespace lumo
