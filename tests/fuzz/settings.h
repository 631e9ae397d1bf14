#pragma once

#include "fuzz/bench.h"
#include "mendo/modulemanager.h"
#include "module/settingsfile.h"

#include <QJsonArray>

namespace fuzz {

/// Reads a settings file with this content, lets `use` look at what the tree then holds, and for some
/// inputs saves it and reads it again. The tree is as after a start before.
template <typename Use>
void readSettings(const Bench& bench, lumo::Settings list, QLatin1String path, const QByteArray& input,
                  Use use) {
    bench.write(lumo::settingsFile(list), input);
    const Budget budget(std::size_t(input.size()));
    lumo::loadSettings(nullptr, list);
    use(m(path));
    if (isChosen(input, 64)) {
        const QJsonValue held = m(path)->exportToJson();
        require(lumo::saveSettings(list), "settings that were read can be saved");
        lumo::loadSettings(nullptr, list);
        require(m(path)->exportToJson() == held, "saved settings are read as they were");
        bench.dropKept();
    }
    mendo::ModuleManager::purgeRemoved();
}

}  // namespace fuzz
