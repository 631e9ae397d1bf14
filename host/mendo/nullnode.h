#pragma once

#include "mendo/moduleobject.h"

namespace mendo {

/// The one null node: it has no children, ignores every write, and reports whoever connects to it,
/// because such a connection would be dead for ever.
class NullNode final : public ModuleObject {
public:
    NullNode() = default;

    bool isNull() const override { return true; }
    void setValue(QObject* sender, QVariant value) override;
    bool insert(QObject* sender, ModuleObject* node, bool notify, int index) override;
    bool remove(QObject* sender, const QString& name, bool notify) override;
    void loadJson(QObject* sender, const QJsonValue& value, bool notify, bool merge, bool keepValue) override;

protected:
    void connectNotify(const QMetaMethod& signal) override;
};

}  // namespace mendo
