#include "files/resumedata.h"

#include "module/host.h"
#include "program/words.h"

using namespace prog;

namespace lumo {

void resetResumeData(QObject* sender) {
    m(key::currentLine)->setValue(sender, 0);
    m(key::currentType)->setValue(sender, 0);
    m(key::currentMoveType)->setValue(sender, 0);
    m(key::currentStartPoint)->clear(sender);
    m(key::currentPausePoint)->clear(sender);
    m(key::weldOpen)->setValue(sender, false);
}

}  // namespace lumo
