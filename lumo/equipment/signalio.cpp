#include "equipment/signalio.h"

#include "equipment/dryguard.h"
#include "module/host.h"

#include <QVariantHash>

using namespace prog;

namespace lumo {

bool signalLevel(QObject* sender, const Signal& input) {
    if (input.name().isEmpty()) {
        return false;
    }
    if (input.isIo) {
        return kordservice()
            ->get(sender, key::deviceIo, mName(word::portInput, input.address()))
            ->getBool(false);
    }
    return kordservice()->dataNode(mName(key::registerValues, input.address()))->getBool(false);
}

void writeSignal(QObject* sender, const Signal& output, const QVariant& state) {
    if (isHeldDark(output, state)) {
        return;
    }
    if (output.isIo) {
        kordservice()->command(sender, command::outDo,
                               QVariantHash{{field::name, output.ioName}, {field::value, state}});
        return;
    }
    kordservice()->execCommand(sender, command::registerWrite,
                               QVariantHash{{field::name, output.registerName},
                                            {field::type, output.registerType},
                                            {field::bias, output.bit},
                                            {field::value, state}});
}

}  // namespace lumo
