#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <QtCore/private/qabstractfileengine_p.h>

namespace fuzz {

/// Files that Qt finds in memory, under these very names: system calls would take most of the time that an
/// input takes. Only to be read; not thread-safe.
class MemoryFiles : public QAbstractFileEngineHandler {
public:
    void put(const QString& name, const QByteArray& content);
    /// The files, which are then no longer found.
    [[nodiscard]] QHash<QString, QByteArray> takeAll();

    [[nodiscard]] QAbstractFileEngine* create(const QString& fileName) const override;

private:
    QHash<QString, QByteArray> contents_;
    qint64 changes_ = 0;
};

}  // namespace fuzz
