// What the panel remembers from one start to the next.

#include "app/preferences.h"
#include "fuzz/bench.h"

#include <QDir>

namespace {

QString placeOfFile() {
    QCoreApplication::setOrganizationName(QStringLiteral("lumo"));
    QCoreApplication::setApplicationName(QStringLiteral("panel"));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(QDir::currentPath()));
    return QDir::current().filePath(QStringLiteral("lumo/panel.json"));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    static const QString file = placeOfFile();
    bench.write(file, QByteArray(reinterpret_cast<const char*>(data), int(size)));

    const fuzz::Budget budget(size);
    const QString language = app::Preferences::language();
    fuzz::require(language.isEmpty() || language.size() == 2, "only a language of the panel is taken");
    fuzz::use(app::Preferences::folder());
    fuzz::use(app::Preferences::pendantPlace());
    fuzz::use(app::Preferences::pendantUnfolded());
    return 0;
}
