#include "simulator/wiring.h"

#include "mendo/plainfile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace sim {

namespace {

/// Rows of the port file.
enum PortRow { Gas = 6, WireEnable = 8, LaserEnable = 9, WirePullback = 14, WireSpeed = 15, LaserPower = 16 };

}  // namespace

Wiring readWiring(const QString& portFile) {
    QString ignored;
    QByteArray text = mendo::readPlainFile(portFile, &ignored).value_or(QByteArray());
    if (text.startsWith("\xEF\xBB\xBF")) {
        text.remove(0, 3);
    }
    const QJsonArray rows = QJsonDocument::fromJson(text).array();
    const auto nameOf = [&rows](PortRow row) {
        return rows.at(row).toObject().value(QStringLiteral("name")).toString();
    };
    Wiring wiring;
    wiring.gas = nameOf(Gas);
    wiring.wireEnable = nameOf(WireEnable);
    wiring.wirePullback = nameOf(WirePullback);
    wiring.laserEnable = nameOf(LaserEnable);
    wiring.laserPower = nameOf(LaserPower);
    wiring.wireSpeed = nameOf(WireSpeed);
    return wiring;
}

}  // namespace sim
