#include "runner/outputcheck.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace run {

namespace {

/// What a name stands for, through links of both kinds.
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
    bool isRegular = false;  ///< devices and pipes lose nothing
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

}  // namespace

QString outputFault(const Options& options, const QStringList& loaded) {
    QStringList read;
    if (!options.project.isEmpty()) {
        read.append(options.project);
    }
    if (!options.scenario.isEmpty()) {
        read.append(options.scenario);
    }
    for (const QString& settings : {QStringLiteral("lumo_port.json"), QStringLiteral("lumo_param.json"),
                                    QStringLiteral("lumo_signalsConfig.json")}) {
        read.append(QDir(options.settings).filePath(settings));
    }
    read += loaded;

    const QString trace = options.trace == QLatin1String("-") ? QString() : options.trace;
    for (const QString& file : read) {
        if (!trace.isEmpty() && isSame(trace, file)) {
            return QStringLiteral("--trace %1 would overwrite a file that is read").arg(options.traceName);
        }
        if (!options.vcd.isEmpty() && isSame(options.vcd, file)) {
            return QStringLiteral("--vcd %1 would overwrite a file that is read").arg(options.vcdName);
        }
    }
    if (!trace.isEmpty() && !options.vcd.isEmpty() && isSame(trace, options.vcd)) {
        return QStringLiteral("--trace and --vcd name the same file, %1").arg(options.vcdName);
    }
    return {};
}

}  // namespace run
