#include "bridge/rule.h"

namespace bridge {

QString ruleText(Rule rule) {
    switch (rule) {
        case Rule::UnknownResult:
            return QStringLiteral("a result of a motion that nobody ordered");
        case Rule::SecondResult:
            return QStringLiteral("a second result of one motion");
        case Rule::StoppedResult:
            return QStringLiteral("a result of a motion that was stopped or dropped");
        case Rule::EarlyResult:
            return QStringLiteral("a result before the motion was released");
        case Rule::ResultOrder:
            return QStringLiteral("results in another order than the motions");
        case Rule::ResultsTogether:
            return QStringLiteral("two results in one millisecond");
        case Rule::PostureMissing:
            return QStringLiteral("no posture between two results");
        case Rule::LateState:
            break;
    }
    return QStringLiteral("the last result while the arm still moves");
}

}  // namespace bridge
