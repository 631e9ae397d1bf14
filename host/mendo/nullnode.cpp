#include "mendo/nullnode.h"

#include <QDebug>
#include <QMetaMethod>

namespace mendo {

void NullNode::setValue(QObject*, QVariant) {}

bool NullNode::insert(QObject*, ModuleObject*, bool, int) {
    return false;
}

bool NullNode::remove(QObject*, const QString&, bool) {
    return false;
}

void NullNode::loadJson(QObject*, const QJsonValue&, bool, bool, bool) {}

void NullNode::connectNotify(const QMetaMethod& signal) {
    qCritical().noquote() << "connected to" << signal.methodSignature()
                          << "of the null node: the node looked up does not exist";
}

}  // namespace mendo
