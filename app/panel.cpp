#include "app/panel.h"

#include "app/cell/cellstrip.h"
#include "app/navigation.h"
#include "app/noticebar.h"
#include "gantu/panel.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "simulator/wiring.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QStackedWidget>

namespace app {

Panel::Panel()
    : controller_(new sim::Controller(kordservice(), {}, this)), window_(std::make_unique<PanelWindow>()) {
    controller_->setPower(false);
    setInstantiatedCenterWidget(window_->pages());
    connect(m(), &mendo::ModuleManager::fileProblem, this, &Panel::onFileProblem);
    connect(window_->navigation(), &Navigation::chosen, this, &Panel::showPage);
}

Panel::~Panel() = default;

bool Panel::open(const QString& libraryFile, QString* error) {
    cell_ = new sim::Cell(controller_, sim::readWiring(QStringLiteral("lumo_port.json")), this);
    if (!package_.load(libraryFile, QStringLiteral("lumo"), error))
        return false;
    Navigation* navigation = window_->navigation();
    navigation->refresh();
    if (!showPage(navigation->firstKey())) {
        *error = QStringLiteral("the package has no page");
        return false;
    }
    window_->setStrip(new CellStrip(controller_));
    return true;
}

QWidget* Panel::showPage(const QString& key) {
    QWidget* page = package_.page(key);
    if (!page)
        return nullptr;
    QStackedWidget* pages = window_->pages();
    if (pages->indexOf(page) < 0)
        pages->addWidget(page);
    pages->setCurrentWidget(page);
    window_->navigation()->select(key);
    return page;
}

bool Panel::openProject(const QString& file) {
    const QWidget* page = window_->pages()->currentWidget();
    auto* button = page ? page->findChild<QAbstractButton*>(QStringLiteral("btnOpen")) : nullptr;
    if (!button)
        return false;
    button->click();
    const QList<QFileDialog*> dialogs = page->findChildren<QFileDialog*>();
    for (QFileDialog* dialog : dialogs) {
        if (!dialog->isVisible())
            continue;
        dialog->selectFile(file);
        return QMetaObject::invokeMethod(dialog, "accept");
    }
    return false;
}

void Panel::onFileProblem(const QString& fileName, int line, int column, const QString& reason) {
    window_->notices()->report(fileName, line, column, reason);
}

}  // namespace app
