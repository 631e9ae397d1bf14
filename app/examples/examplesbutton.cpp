#include "app/examples/examplesbutton.h"

#include "app/cell/nodes.h"
#include "app/examples/exampleshelf.h"
#include "mendo/modulemanager.h"

#include <QMenu>

using mendo::ModuleObject;

namespace app {

ExamplesButton::ExamplesButton(const ExampleShelf& shelf, QWidget* parent)
    : QToolButton(parent), menu_(new QMenu(this)) {
    setObjectName(QStringLiteral("btnExamples"));
    setText(tr("示例") + QStringLiteral(" ▾"));
    setFocusPolicy(Qt::TabFocus);
    setMinimumSize(120, 48);
    const QStringList names = shelf.names();
    for (const QString& name : names) {
        menu_->addAction(ExampleShelf::title(name), this, [this, name] { emit chosen(name); });
    }
    // Not as the button's own menu, which would wait in a loop: a station may start a run meanwhile.
    connect(this, &QToolButton::clicked, this, [this] { menu_->popup(mapToGlobal(rect().bottomLeft())); });
    hide();
}

void ExamplesButton::follow() {
    const ModuleObject* program = m(node::program);
    for (const auto change : {&ModuleObject::added, &ModuleObject::removed}) {
        connect(program, change, this, &ExamplesButton::refresh);
    }
    connect(program, &ModuleObject::changed, this, &ExamplesButton::refresh);
    connect(m(node::programState), &ModuleObject::changed, this, &ExamplesButton::refresh);
    refresh();
}

void ExamplesButton::refresh() {
    const bool busy = m(node::programState)->getString() == QLatin1String("busy");
    setVisible(!busy && m(node::program)->cmobjCount() == 0 && !menu_->isEmpty());
}

}  // namespace app
