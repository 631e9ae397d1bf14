#include "editor/pairing.h"

#include "program/words.h"

using namespace prog;

namespace lumo {

bool WeldPairs::match() const {
    if (opens.size() != closes.size()) {
        return false;
    }
    for (int pair = 0; pair < opens.size(); ++pair) {
        const bool isLast = pair + 1 == opens.size();
        if (closes.at(pair) < opens.at(pair) || (!isLast && opens.at(pair + 1) < closes.at(pair))) {
            return false;
        }
    }
    return true;
}

WeldPairs weldPairs(const ModuleObject* program) {
    WeldPairs pairs;
    const QList<ModuleObject*> statements = program->cmobjs();
    for (int row = 0; row < statements.size(); ++row) {
        const QString type = statements.at(row)->c(field::type)->getString();
        if (type == statement::open) {
            pairs.opens.append(row);
        } else if (type == statement::close) {
            pairs.closes.append(row);
        }
    }
    return pairs;
}

}  // namespace lumo
