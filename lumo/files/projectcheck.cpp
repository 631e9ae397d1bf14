#include "files/projectcheck.h"

#include "module/globals.h"
#include "module/host.h"
#include "program/runprogram.h"
#include "program/words.h"

#include <limits>

using namespace prog;

namespace lumo {

Findings ProjectCheck::check(const QString& fileName, const Project& project) {
    const QJsonValue statements(project.statements);
    Findings findings = checkProgram(statements, m(key::param), m(key::port), CellFacts::ofHost());
    if (lumo_arm) {
        ReachCheck& reach = reach_.try_emplace(fileName, *lumo_arm).first->second;
        reach.begin(RunProgram(statements));
        reach.advance(std::numeric_limits<int>::max());
        findings.insert(findings.end(), reach.findings().begin(), reach.findings().end());
    }
    return findings;
}

}  // namespace lumo
