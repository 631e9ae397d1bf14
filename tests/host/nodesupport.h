#pragma once

#include "mendo/moduleobject.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <utility>

/// Writes down what a node announces, in order: "changed 2<1", "added a@0", "removed a@1".
class Recorder : public QObject {
public:
    explicit Recorder(mendo::ModuleObject* node, const QString& prefix = QString()) {
        using mendo::ModuleObject;
        connect(node, &ModuleObject::changed, this,
                [this, prefix](const QVariant& now, const QVariant& before, QObject* sender) {
                    heard << prefix + QStringLiteral("changed %1<%2").arg(now.toString(), before.toString());
                    lastSender = sender;
                });
        connect(node, &ModuleObject::added, this, [this, prefix, node](const QString& name, QObject* sender) {
            heard << prefix + QStringLiteral("added %1@%2").arg(name).arg(node->c(name)->indexInPmobj());
            lastSender = sender;
        });
        connect(node, &ModuleObject::removed, this,
                [this, prefix, node](const QString& name, QObject* sender) {
                    heard << prefix +
                                 QStringLiteral("removed %1@%2").arg(name).arg(node->c(name)->indexInPmobj());
                    lastSender = sender;
                });
    }

    QStringList take() { return std::exchange(heard, {}); }

    QStringList heard;
    QObject* lastSender = nullptr;
};

/// A JSON array or object written with ' for ".
inline QJsonValue json(const char* text) {
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray(text).replace('\'', '"'));
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

/// The content of a map or list as compact JSON with ' for ".
inline QString text(const mendo::ModuleObject* node) {
    const QJsonValue value = node->exportToJson();
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact))
        .replace(QLatin1Char('"'), QLatin1Char('\''));
}
