#include "tools/pictures/gallery.h"

#include "app/panel.h"
#include "gantu/package.h"
#include "mendo/log.h"
#include "program/words.h"
#include "tools/pictures/looksheet.h"
#include "tools/pictures/scene.h"
#include "tools/pictures/tour.h"
#include "workcell/commandline.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QSize>
#include <QTemporaryDir>

#include <vector>

namespace pictures {

namespace {

constexpr int failed = 1;

/// The sizes of the panel's window that pictures are taken in.
std::vector<QSize> pictureSizes() {
    return {QSize(1024, 768), QSize(1280, 800), QSize(1920, 1080), QSize(2560, 1440)};
}

QString pictureName(const QString& language, const QSize& size, const QString& name) {
    return QStringLiteral("%1-%2x%3-%4.png")
        .arg(language, QString::number(size.width()), QString::number(size.height()), name);
}

/// Copies the projects and settings that the pictures show into a folder and makes it the working directory.
bool layOutSample(const QString& folder) {
    const QDir sample(QStringLiteral(":/pictures"));
    bool copied = QDir().mkpath(folder) && QDir::setCurrent(folder);
    const QStringList names = sample.entryList();
    for (const QString& fileName : names) {
        copied = copied && QFile::copy(sample.filePath(fileName), fileName);
        QFile::setPermissions(fileName, QFile::ReadOwner | QFile::WriteOwner);
    }
    return copied;
}

/// Takes one stop's pictures in all sizes; whether all could be taken.
bool visit(const Stop& stop, Scene* scene, const QDir& folder, const QString& language,
           const Choice& choice) {
    bool whole = true;
    const std::vector<QSize> sizes = choice.size.isValid() ? std::vector<QSize>{choice.size} : pictureSizes();
    for (const QSize& size : sizes) {
        scene->reset(size);
        stop.go(*scene);
        const QString file = pictureName(language, size, QLatin1String(stop.name));
        QString problem = scene->problem();
        if (problem.isEmpty() && scene->picture().size() != size) {
            problem = scene->picture().isNull() ? QStringLiteral("its moment did not come")
                                                : QStringLiteral("the panel does not fit");
        }
        QStringList problems = problem.isEmpty() ? scene->faults() : QStringList{problem};
        const bool isKept = !scene->picture().isNull() && !(choice.faultyOnly && problems.isEmpty());
        if (isKept && !scene->picture().save(folder.filePath(file))) {
            problems << QStringLiteral("it cannot be written");
        }
        for (const QString& each : problems) {
            complain(file + QStringLiteral(": ") + each);
            whole = false;
        }
    }
    return whole;
}

/// The options of the command line for a choice.
QStringList optionsOf(const Choice& choice) {
    QStringList options;
    if (!choice.part.isEmpty()) {
        options << QStringLiteral("--only") << choice.part;
    }
    if (choice.size.isValid()) {
        options << QStringLiteral("--size")
                << QStringLiteral("%1x%2").arg(choice.size.width()).arg(choice.size.height());
    }
    if (choice.faultyOnly) {
        options << QStringLiteral("--faulty");
    }
    return options;
}

}  // namespace

int complain(const QString& text) {
    workcell::printError("lumo-pictures", text);
    return failed;
}

bool readSize(const QString& text, QSize* size) {
    const QStringList sides = text.split(QLatin1Char('x'));
    *size = sides.size() == 2 ? QSize(sides.first().toInt(), sides.last().toInt()) : QSize();
    return !size->isEmpty();
}

int writeGallery(const QString& folder, const QString& language, const Choice& choice) {
    mendo::LogHub::instance()->setConsole(false);
    if (!QDir().mkpath(folder)) {
        return complain(folder + QStringLiteral(": the folder cannot be made"));
    }
    const QTemporaryDir place;
    if (!place.isValid() || !layOutSample(place.filePath(QStringLiteral("cell")))) {
        return complain(QStringLiteral("the sample cannot be laid out"));
    }
    // A file dialog reads its look and history from the user's configuration, the panel its runs from the
    // user's data: use empty ones.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, place.path());
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(place.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(place.filePath(QStringLiteral("data"))));
    app::Panel panel;
    QString error;
    if (!panel.open(gantu::findLibrary(prog::key::lumo), &error)) {
        return complain(error);
    }
    if (QLatin1String("look").contains(choice.part) &&
        !writeLookSheet(QDir(folder).filePath(QStringLiteral("look.png")))) {
        return complain(QStringLiteral("look.png cannot be written"));
    }
    panel.window()->show();
    panel.complete();
    Scene scene(&panel);
    bool whole = true;
    for (const Stop& stop : stops()) {
        if (QLatin1String(stop.name).contains(choice.part)) {
            whole = visit(stop, &scene, QDir(folder), language, choice) && whole;
        }
    }
    scene.reset(pictureSizes().front());
    QDir::setCurrent(QDir::rootPath());
    return whole ? 0 : failed;
}

int writeEveryGallery(const QString& folder, const Choice& choice) {
    int status = 0;
    for (const QString& language : workcell::languages()) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(
            QCoreApplication::applicationFilePath(),
            QStringList{QStringLiteral("--language"), language} + optionsOf(choice) + QStringList{folder});
        process.waitForFinished(-1);
        if (process.exitStatus() != QProcess::NormalExit) {
            status = complain(language + QStringLiteral(": the process crashed"));
        } else if (process.exitCode() != 0) {
            status = process.exitCode();
        }
    }
    return status;
}

}  // namespace pictures
