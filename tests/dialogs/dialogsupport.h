#pragma once

#include "module/host.h"

#include <QDialogButtonBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>
#include <QTest>
#include <QWidget>

#include <memory>

namespace test {

/// A node of its own with the content of a JSON object.
inline std::unique_ptr<ModuleObject> node(const QByteArray& json) {
    auto result = std::make_unique<ModuleObject>(QStringLiteral("record"));
    result->loadJson(nullptr, QJsonDocument::fromJson(json).object());
    return result;
}

inline QJsonObject object(const QByteArray& json) {
    return QJsonDocument::fromJson(json).object();
}

/// The content as one line, so that a failure prints it.
inline QString text(const ModuleObject* node) {
    return QString::fromUtf8(QJsonDocument(node->exportToJson().toObject()).toJson(QJsonDocument::Compact));
}

inline QString text(const QByteArray& json) {
    return QString::fromUtf8(QJsonDocument(object(json)).toJson(QJsonDocument::Compact));
}

template <typename T = QWidget>
T* child(const QWidget* parent, const char* name) {
    T* found = parent->findChild<T*>(QString::fromLatin1(name));
    if (!found) {
        qFatal("no child %s", name);
    }
    return found;
}

inline QPushButton* button(const QWidget* dialog, QDialogButtonBox::StandardButton which) {
    return child<QDialogButtonBox>(dialog, "buttonBox")->button(which);
}

inline void click(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton);
}

inline void clickOk(const QWidget* dialog) {
    click(button(dialog, QDialogButtonBox::Ok));
}

}  // namespace test
