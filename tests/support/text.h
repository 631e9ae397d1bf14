#pragma once

#include "mendo/moduleobject.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <memory>

namespace test {

/// A file's content; "(no file)" when it cannot be read.
inline QByteArray contentOf(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

inline void writeFile(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(name));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// JSON written with ' instead of ", as bytes and parsed. JSON that does not parse ends the program.
inline QByteArray quoted(QByteArray text) {
    return text.replace('\'', '"');
}

inline QJsonValue json(const QByteArray& text) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(quoted(text), &error);
    if (error.error != QJsonParseError::NoError) {
        qFatal("%s: %s", qPrintable(error.errorString()), text.constData());
    }
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

/// Compact JSON with ' instead of ", readable in a failure message.
inline QString text(const QJsonValue& value) {
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact)).replace('"', '\'');
}

inline QString text(const mendo::ModuleObject* node) {
    return text(node->exportToJson());
}

/// A detached node with this content.
inline std::unique_ptr<mendo::ModuleObject> node(const QByteArray& content) {
    auto made = std::make_unique<mendo::ModuleObject>(QStringLiteral("record"));
    made->loadJson(nullptr, json(content));
    return made;
}

}  // namespace test
