#pragma once

#include <QString>
#include <QVariant>

#include <vector>

struct KordCall;

namespace bridge {

/// A write of an element of a register, as a call asks for it.
struct RegisterWrite {
    QString name, type;
    QVariant value;
    int bias = 0;  ///< the element
};

/// The writes of a call of "register.write" or "register.write_multi", in their order.
std::vector<RegisterWrite> registerWrites(const KordCall& call);

}  // namespace bridge
