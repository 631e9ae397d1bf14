#pragma once

#include <QString>

namespace app {

/// Nodes of the tree that the panel's cell view reads.
namespace node {
const QString power = QStringLiteral("kord.r.power");
const QString mode = QStringLiteral("kord.r.mode");
const QString robotState = QStringLiteral("kord.r.state");
const QString programState = QStringLiteral("lumo.execute.state");
const QString ports = QStringLiteral("lumo.port");
const QString posture = QStringLiteral("sys.posture");
}  // namespace node

}  // namespace app
