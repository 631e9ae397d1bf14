#include "app/examples/examplesbutton.h"

#include "app/examples/examplelibrary.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QMenu>

using mendo::ModuleObject;

namespace app {

ExamplesButton::ExamplesButton(const ExampleLibrary& library, QWidget* parent)
    : QToolButton(parent), menu_(new QMenu(this)) {
    setObjectName(QStringLiteral("btnExamples"));
    setText(tr("示例") + QStringLiteral(" ▾"));
    setFocusPolicy(Qt::TabFocus);
    setMinimumSize(120, 48);
    const QStringList names = library.names();
    for (const QString& name : names) {
        menu_->addAction(ExampleLibrary::title(name), this, [this, name] { emit chosen(name); });
    }
    // Not QToolButton::setMenu(), which runs a nested event loop in which a station could start a run.
    connect(this, &QToolButton::clicked, this, [this] { menu_->popup(mapToGlobal(rect().bottomLeft())); });
    hide();
}

void ExamplesButton::connectToTree() {
    const ModuleObject* program = m(prog::key::program);
    for (const auto change : {&ModuleObject::added, &ModuleObject::removed}) {
        connect(program, change, this, &ExamplesButton::refresh);
    }
    connect(program, &ModuleObject::changed, this, &ExamplesButton::refresh);
    connect(m(prog::key::executeState), &ModuleObject::changed, this, &ExamplesButton::refresh);
    refresh();
}

void ExamplesButton::refresh() {
    const bool busy = m(prog::key::executeState)->getString() == prog::word::busy;
    setVisible(!busy && m(prog::key::program)->cmobjCount() == 0 && !menu_->isEmpty());
}

}  // namespace app
