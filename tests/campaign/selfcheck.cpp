#include "campaign/rules.h"

namespace campaign {

/// What no rule says of its course.
QStringList checkRules() {
    return {};
}

}  // namespace campaign
