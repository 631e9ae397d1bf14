#include "program/signal.h"

#include "mendo/modulemanager.h"
#include "mendo/moduleobject.h"

using mendo::ModuleObject;

namespace prog {

Signal Signal::from(const ModuleObject* record, const SignalFields& fields) {
    const ModuleObject* const reg = record->c(fields.reg);
    Signal signal;
    signal.isIo = record->c(fields.kind)->getString() == word::io;
    signal.ioName = record->c(fields.ioName)->getString();
    signal.registerName = reg->c(field::name)->getString();
    signal.registerType = reg->c(field::type)->getString();
    signal.bit = reg->c(field::bias)->getInt();
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
