#include "runner/outputfault.h"

#include "program/words.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <vector>

#include <sys/stat.h>

namespace run {

namespace {

const QString standardOutput = QStringLiteral("-");

/// The file behind a name, through symbolic and hard links.
struct Target {
    explicit Target(const QString& file) {
        struct stat status = {};
        exists = ::stat(QFile::encodeName(file).constData(), &status) == 0;
        isRegular = S_ISREG(status.st_mode);
        device = status.st_dev;
        inode = status.st_ino;
        const QFileInfo info(file);
        name = QDir(info.dir().canonicalPath()).filePath(info.fileName());
    }

    QString name;
    bool exists = false;
    bool isRegular = false;  ///< writing to a device or a pipe overwrites nothing
    dev_t device = 0;
    ino_t inode = 0;
};

bool isSame(const QString& one, const QString& other) {
    const Target a(one), b(other);
    if (a.exists && b.exists) {
        return a.isRegular && a.device == b.device && a.inode == b.inode;
    }
    return !a.exists && !b.exists && a.name == b.name;
}

/// A file that the runner writes.
struct OutputFile {
    const char* option;
    QString file, name;

    bool goesTo(const OutputFile& other) const {
        const bool isStandard = file == standardOutput || other.file == standardOutput;
        return isStandard ? file == other.file : isSame(file, other.file);
    }
};

std::vector<OutputFile> outputFiles(const Options& o) {
    std::vector<OutputFile> files;
    for (const OutputFile& output : {OutputFile{"--trace", o.trace, o.traceName},
                                     {"--vcd", o.vcd, o.vcdName},
                                     {"--summary", o.summary, o.summaryName},
                                     {"--junit", o.junit, o.junitName},
                                     {"--flight", o.flight, o.flightName}}) {
        if (!output.file.isEmpty()) {
            files.push_back(output);
        }
    }
    return files;
}

}  // namespace

QString outputFault(const Options& options, const QStringList& loaded) {
    QStringList read = loaded;
    for (const QString& file : {options.project, options.scenario, options.limits, options.wiring}) {
        if (!file.isEmpty()) {
            read.append(file);
        }
    }
    for (const QLatin1String settings : {prog::file::ports, prog::file::parameters, prog::file::stations}) {
        read.append(QDir(options.settings).filePath(settings));
    }
    const std::vector<OutputFile> written = outputFiles(options);
    for (std::size_t i = 0; i < written.size(); ++i) {
        const QString option = QLatin1String(written[i].option);
        for (const QString& file : read) {
            if (written[i].file != standardOutput && isSame(written[i].file, file)) {
                return QStringLiteral("%1 %2 would overwrite a file that is read")
                    .arg(option, written[i].name);
            }
        }
        for (std::size_t k = i + 1; k < written.size(); ++k) {
            if (written[i].goesTo(written[k])) {
                return QStringLiteral("%1 and %2 name the same file, %3")
                    .arg(option, QLatin1String(written[k].option), written[k].name);
            }
        }
    }
    return {};
}

}  // namespace run
