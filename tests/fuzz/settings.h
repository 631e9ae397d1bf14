#pragma once

#include "fuzz/bench.h"
#include "mendo/modulemanager.h"
#include "module/settingsfile.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace fuzz {

/// Reads a settings file with this content, lets `use` look at what the tree then holds, and for some
/// inputs saves it and reads it again. Then the list is given its content `usual` again, which it must have
/// before.
template <typename Use>
void readSettings(const Bench& bench, lumo::Settings list, QLatin1String path, const QByteArray& input,
                  const QJsonValue& usual, Use use) {
    bench.write(lumo::settingsFile(list), input);
    const Budget budget(std::size_t(input.size()));
    lumo::loadSettings(nullptr, list);
    const bool isJson = !QJsonDocument::fromJson(input).isNull() || input.startsWith("\xEF\xBB\xBF");
    if (!isJson)
        return;  // it changes nothing
    use(m(path));
    if (isChosen(input, shareSaved)) {
        bench.moveToDisk();
        const QJsonValue held = m(path)->exportToJson();
        require(lumo::saveSettings(list), "settings that were read can be saved");
        lumo::loadSettings(nullptr, list);
        require(isSame(m(path)->exportToJson(), held), "saved settings are read as they were");
        bench.clearDisk();
    }
    m(path)->loadJson(nullptr, usual);
    mendo::ModuleManager::purgeRemoved();
}

}  // namespace fuzz
