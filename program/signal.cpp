#include "program/signal.h"

#include "mendo/modulemanager.h"
#include "mendo/moduleobject.h"

using mendo::ModuleObject;

namespace prog {

Signal Signal::from(const Record& record, const SignalFields& fields) {
    const Record reg = record.at(fields.reg);
    Signal signal;
    signal.isIo = record.at(fields.kind).text() == word::io;
    signal.ioName = record.at(fields.ioName).text();
    signal.registerName = reg.at(field::name).text();
    signal.registerType = reg.at(field::type).text();
    signal.bit = reg.at(field::bias).integer();
    return signal;
}

void Signal::store(QObject* sender, ModuleObject* record, const SignalFields& fields,
                   const QString& registerKind, bool withRegister) const {
    record->set(sender, fields.ioName, ioName)
        ->set(sender, fields.kind, isIo ? QString(word::io) : registerKind);
    if (withRegister) {
        record->set(sender, mName(fields.reg, field::name), registerName)
            ->set(sender, mName(fields.reg, field::bias), bit)
            ->set(sender, mName(fields.reg, field::type), registerType);
    }
}

QString Signal::address() const {
    return isIo ? ioName : mName(registerName, mIndex(bit));
}

QString Signal::text() const {
    return isIo ? ioName : QStringLiteral("%1[%2]").arg(registerName, QString::number(qint64(bit) + 1));
}

}  // namespace prog
