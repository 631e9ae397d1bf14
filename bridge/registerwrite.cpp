#include "bridge/registerwrite.h"

#include "bridge/words.h"
#include "kord/kordservice.h"

namespace bridge {

namespace {

const QString nameKey = QStringLiteral("name");
const QString typeKey = QStringLiteral("type");
const QString valueKey = QStringLiteral("value");
const QString biasKey = QStringLiteral("bias");

}  // namespace

std::vector<RegisterWrite> registerWrites(const KordCall& call) {
    if (call.name == word::registerWrite) {
        return {{call.argument(nameKey).toString(), call.argument(typeKey).toString(),
                 call.argument(valueKey), call.argument(biasKey).toInt()}};
    }
    std::vector<RegisterWrite> writes;
    if (call.node) {
        for (const mendo::ModuleObject* record : call.node->cmobjs()) {
            writes.push_back({record->c(nameKey)->getString(), record->c(typeKey)->getString(),
                              record->c(valueKey)->value(), record->c(biasKey)->value().toInt()});
        }
    }
    const QVariantList list = call.value.toList();
    for (const QVariant& record : list) {
        const QVariantHash fields = record.canConvert<QVariantHash>() ? record.toHash() : QVariantHash();
        writes.push_back({fields.value(nameKey).toString(), fields.value(typeKey).toString(),
                          fields.value(valueKey), fields.value(biasKey).toInt()});
    }
    return writes;
}

}  // namespace bridge
