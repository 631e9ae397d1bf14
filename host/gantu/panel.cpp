#include "gantu/panel.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QPointer>
#include <QStackedWidget>
#include <QTranslator>

#include <memory>

namespace {

QPointer<QStackedWidget>& centerWidget() {
    static QPointer<QStackedWidget> widget;
    return widget;
}

/// The file name up to the last '_', which is the same for all catalogues of a package.
QString packageOf(const QString& path) {
    const QString name = QFileInfo(path).completeBaseName();
    return name.left(name.lastIndexOf(QLatin1Char('_')));
}

}  // namespace

bool Translator::installQMTranslator(const QString& path) {
    static QHash<QString, QPointer<QTranslator>> installed;
    QCoreApplication* application = QCoreApplication::instance();
    if (!application || !QFileInfo::exists(path)) {
        return false;
    }
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(path)) {
        return false;
    }
    QPointer<QTranslator>& current = installed[packageOf(path)];
    delete current;  // its destructor removes it from the application
    current = translator.release();
    current->setParent(application);
    return QCoreApplication::installTranslator(current);
}

Translator* translator() {
    static Translator translator;
    return &translator;
}

QStackedWidget* instantiatedCenterWidget() {
    return centerWidget();
}

void setInstantiatedCenterWidget(QStackedWidget* widget) {
    centerWidget() = widget;
}
