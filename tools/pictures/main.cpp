#include "app/appearance.h"
#include "simulator/time/virtualtime.h"
#include "tools/pictures/gallery.h"
#include "workcell/commandline.h"

#include <QApplication>
#include <QFileInfo>

namespace {

constexpr int badUsage = 2;

const char* const usage =
    "Usage: lumo-pictures [--language cn|en|ru] [--size WIDTHxHEIGHT] [--only TEXT] [--faulty] DIR\n\n"
    "Writes a picture of every page, dialog and message of the operator panel into a folder, in\n"
    "every language (or one) and four sizes (or one); with --only those whose names contain the\n"
    "text. With --faulty it judges all and writes those in which something is wrong. Needs no screen.\n\n"
    "Exit status: 0 all written; 1 a picture is missing; 2 bad usage.\n";

void onQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (workcell::isComplaint(type, text)) {
        pictures::complain(text);
    }
}

}  // namespace

int main(int argc, char** argv) {
    QString language;
    pictures::Choice choice;
    bool help = false;
    QStringList folders;
    const QString reason = workcell::readArguments(
        workcell::decodedArguments(argc, argv),
        {workcell::languageOption(&language, ""),
         {"size", "WIDTHxHEIGHT", "",
          [&choice](const QString& text) {
              return pictures::readSize(text, &choice.size) ? QString()
                                                            : QStringLiteral("is no size such as 1280x800");
          }},
         {"only", "TEXT", "",
          [&choice](const QString& text) {
              choice.part = text;
              return QString();
          }},
         workcell::flag("faulty", "", &choice.faultyOnly),
         workcell::flag("help", "", &help)},
        &folders);
    if (help) {
        workcell::print(QLatin1String(usage));
        return 0;
    }
    if (!reason.isEmpty() || folders.size() != 1 || folders.first().isEmpty()) {
        pictures::complain(reason.isEmpty() ? QStringLiteral("expected one folder, see --help") : reason);
        return badUsage;
    }
    const QString folder = QFileInfo(folders.first()).absoluteFilePath();
    int programOnly = 1;
    if (language.isEmpty()) {
        const QCoreApplication application(programOnly, argv);
        return pictures::writeEveryGallery(folder, choice);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(onQtMessage);
    sim::VirtualTime::install();
    QCoreApplication::setOrganizationName(QStringLiteral("lumo"));
    QCoreApplication::setApplicationName(QStringLiteral("lumo-panel"));  // the panel finds its folders by it
    const QApplication application(programOnly, argv);
    app::installStyle();
    app::installLanguage(language);
    return pictures::writeGallery(folder, language, choice);
}
