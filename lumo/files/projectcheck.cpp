#include "files/projectcheck.h"

#include "module/globals.h"
#include "module/host.h"
#include "program/check.h"
#include "program/runprogram.h"
#include "program/words.h"

#include <iterator>

using namespace prog;

namespace lumo {

Findings checkProject(const Project& project) {
    const QJsonValue statements(project.statements);
    Findings findings = checkProgram(statements, m(key::param), m(key::port), CellFacts::ofHost());
    if (lumo_arm) {
        Findings reach = checkReach(RunProgram(statements), *lumo_arm);
        std::move(reach.begin(), reach.end(), std::back_inserter(findings));
    }
    return findings;
}

}  // namespace lumo
