#include "app/help/chapters.h"

#include "app/appearance.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QApplication>
#include <QFile>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>
#include <QWidget>

namespace app {

namespace {

/// The classes of dialogs and pages, and the chapter about each. The first one that is visible counts.
constexpr struct {
    const char* className;
    const char* chapter;
} rows[] = {
    {"QMessageBox", "what-the-messages-mean"},
    {"QFileDialog", "projects"},
    {"AddParamDialog", "projects"},
    {"WaitDIDialog", "inputs-outputs-delays"},
    {"SetDODialog", "inputs-outputs-delays"},
    {"DelayDialog", "inputs-outputs-delays"},
    {"SelectParamDialog", "the-weld"},
    {"ParamValuesDialog", "parameter-sets"},
    {"PointWidget", "points"},
    {"PortConfigWidget", "ports"},
    {"ParamConfigWidget", "parameter-sets"},
    {"StatusMonitorWidget", "what-the-equipment-says"},
    {"DeviceControlWidget", "devices-by-hand"},
    {"SignalsBindWidget", "stations"},
    {"SignalsBindingParamWidget", "stations"},
};
constexpr char ofRun[] = "running-it";
constexpr char ofStop[] = "stopping-and-going-on";
constexpr char ofViews[] = "what-a-run-has-welded";
constexpr char ofProgram[] = "a-program";
constexpr char ofWindow[] = "the-window";

bool isShown(const QWidget* widget, const char* className) {
    return widget->isVisible() && widget->inherits(className);
}

/// Whether the keyboard is in a dock that shows runs.
bool isInView(const QWidget* widget) {
    const QStringList views{QStringLiteral("dock_path"), QStringLiteral("dock_signals"),
                            QStringLiteral("dock_results"), QStringLiteral("dock_log")};
    while (widget && !views.contains(widget->objectName())) {
        widget = widget->parentWidget();
    }
    return widget;
}

/// Of the project page.
QString chapterOfProgram() {
    if (m(prog::key::executeState)->getString() != prog::word::idle) {
        return QLatin1String(ofRun);
    }
    const bool isStopped = m(prog::key::weldOpen)->getBool(false);
    return QLatin1String(isStopped ? ofStop : ofProgram);
}

}  // namespace

QUrl handbookUrl() {
    const QString language = presentLanguage();
    const QString file = language == QLatin1String("cn") || language == QLatin1String("ru")
                             ? QStringLiteral("handbook.%1.md").arg(language)
                             : QStringLiteral("README.md");
    return QUrl(QStringLiteral("qrc:/app/docs/handbook/") + file);
}

const QStringList& handbookAnchors() {
    static const QStringList anchors = [] {
        QFile file(QStringLiteral(":/app/docs/handbook/README.md"));
        file.open(QIODevice::ReadOnly);
        QTextDocument document;
        document.setMarkdown(QString::fromUtf8(file.readAll()));
        QStringList all;
        for (const QTextBlock& heading : headingsOf(document)) {
            all << anchorOf(heading.text());
        }
        return all;
    }();
    return anchors;
}

QVector<QTextBlock> headingsOf(const QTextDocument& document) {
    QVector<QTextBlock> headings;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0) {
            headings << block;
        }
    }
    return headings;
}

QString anchorOf(const QString& heading) {
    QString anchor;
    for (const QChar letter : heading.toLower()) {
        if (letter.isLetterOrNumber() || letter == QLatin1Char('-')) {
            anchor += letter;
        } else if (letter.isSpace()) {
            anchor += QLatin1Char('-');
        }
    }
    return anchor;
}

QString chapterOf(const QWidget* page) {
    if (isInView(QApplication::focusWidget())) {
        return QLatin1String(ofViews);
    }
    for (const auto& row : rows) {
        QWidgetList seen = QApplication::topLevelWidgets();
        if (page) {
            seen += page->findChildren<QWidget*>();
        }
        for (const QWidget* widget : qAsConst(seen)) {
            if (isShown(widget, row.className)) {
                return QLatin1String(row.chapter);
            }
        }
    }
    return page && page->isVisible() ? chapterOfProgram() : QLatin1String(ofWindow);
}

QStringList chapters() {
    QStringList all{QLatin1String(ofRun), QLatin1String(ofStop), QLatin1String(ofViews),
                    QLatin1String(ofProgram), QLatin1String(ofWindow)};
    for (const auto& row : rows) {
        all << QLatin1String(row.chapter);
    }
    return all;
}

}  // namespace app
