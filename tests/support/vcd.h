#pragma once

#include <QFile>
#include <QHash>
#include <QMap>
#include <QRegularExpression>
#include <QStringList>

/// The changes of each signal in a value change dump, as "time:value".
inline QMap<QString, QStringList> readDump(const QString& file) {
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        return {};
    }
    QHash<QString, QStringList> names;
    QMap<QString, QStringList> changes;
    QString time, scope;
    for (const QString& line : QString::fromUtf8(in.readAll()).split(QLatin1Char('\n'))) {
        const QStringList words = line.simplified().split(QLatin1Char(' '));
        if (words.first() == QLatin1String("$scope")) {
            scope = words[2];
        } else if (words.first() == QLatin1String("$var")) {
            names[words[3]].append(scope + QLatin1Char('.') + words[4]);
        } else if (line.startsWith(QLatin1Char('#'))) {
            time = line.mid(1);
        } else if (line.contains(QRegularExpression(QStringLiteral("^[01br]"))) && !names.isEmpty()) {
            const bool vector = words.size() > 1;
            const QString code = vector ? words[1] : line.mid(1);
            QString value = vector ? words[0].mid(1) : line.left(1);
            if (line.startsWith(QLatin1Char('b'))) {
                value = QString::number(qint32(value.toUInt(nullptr, 2)));
            }
            for (const QString& name : names.value(code)) {
                changes[name].append(time + QLatin1Char(':') + value);
            }
        }
    }
    return changes;
}
