// Runs a target over files: those named, and those in the folders named. A folder that is not there is
// an empty one.

#include "fuzz/bench.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <vector>

namespace {

std::vector<QString> filesOf(const QString& place) {
    if (QFileInfo(place).isFile())
        return {QFileInfo(place).absoluteFilePath()};
    std::vector<QString> files;
    QDirIterator entries(place, QDir::Files);
    while (entries.hasNext())
        files.push_back(QFileInfo(entries.next()).absoluteFilePath());
    return files;
}

}  // namespace

int main(int argc, char** argv) {
    int inputs = 0;
    fuzz::chooseAll();
    for (int i = 1; i < argc; ++i) {
        for (const QString& name : filesOf(QFile::decodeName(argv[i]))) {
            QFile file(name);
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "cannot read %s\n", qPrintable(name));
                return 1;
            }
            const QByteArray input = file.readAll();
            std::fprintf(stderr, "%s\n", qPrintable(name));
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.constData()),
                                   std::size_t(input.size()));
            ++inputs;
        }
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
