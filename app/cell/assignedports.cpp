#include "app/cell/assignedports.h"

#include "mendo/modulemanager.h"
#include "program/words.h"

namespace app {

QHash<QString, AssignedPort> assignedPorts() {
    QHash<QString, AssignedPort> ports;
    const QList<mendo::ModuleObject*> rows = m(prog::key::port)->cmobjs();
    for (int row = 0; row < rows.size() && row < prog::portCount; ++row) {
        ports.insert(rows[row]->c(prog::field::name)->getString(),
                     {rows[row]->c(prog::field::tag)->getString(), prog::portInfo(I_PORT(row)).meaning});
    }
    return ports;
}

}  // namespace app
