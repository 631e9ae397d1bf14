#include "panel/undobar.h"

#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "program/words.h"
#include "widgets/foldingbar.h"
#include "widgets/messagebox.h"
#include "widgets/wraptoolbutton.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QToolTip>

#include <utility>

using namespace prog;

namespace lumo {

UndoBar::UndoBar(Panel panel, QWidget* page)
    : QWidget(page),
      panel_(std::move(panel)),
      undo_(makeButton("btnUndo", QStringLiteral("undo"), tr("撤销"), History::Way::Undo)),
      redo_(makeButton("btnRedo", QStringLiteral("redo"), tr("重做"), History::Way::Redo)) {
    setObjectName(QStringLiteral("undoBar"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(undo_);
    row->addWidget(redo_);
    addKey(QKeySequence(QStringLiteral("Ctrl+Z")), History::Way::Undo);
    addKey(QKeySequence(QStringLiteral("Ctrl+Shift+Z")), History::Way::Redo);
    addKey(QKeySequence(QStringLiteral("Ctrl+Y")), History::Way::Redo);
    connect(History::instance(), &History::changed, this, &UndoBar::refresh);
    connect(m(key::executeState), &ModuleObject::changed, this, &UndoBar::refresh);
    connect(m(key::robotPower), &ModuleObject::changed, this, &UndoBar::refresh);
    if (executor) {
        connect(executor, &LumoExecutor::activityChanged, this, &UndoBar::refresh);
    }
    refresh();
}

bool UndoBar::standIn(const QWidget* page, const QString& title) {
    auto* const label = page->findChild<QWidget*>(title);
    const QList<QHBoxLayout*> rows = label ? page->findChildren<QHBoxLayout*>() : QList<QHBoxLayout*>();
    for (QHBoxLayout* const row : rows) {
        const int place = row->indexOf(label);
        if (place >= 0) {
            row->insertWidget(place + 1, this);
            if (auto* const bar = qobject_cast<FoldingBar*>(row->parentWidget())) {
                bar->fold();
            }
            return true;
        }
    }
    return false;
}

WrapToolButton* UndoBar::makeButton(const char* name, const QString& icon, const QString& word,
                                    History::Way way) {
    auto* const button = new WrapToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setText(word);
    button->setFace(icon, ButtonFace::Place::Over);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(button, &QToolButton::clicked, this, [this, way] { go(way); });
    return button;
}

void UndoBar::addKey(const QKeySequence& keys, History::Way way) {
    auto* const shortcut = new QShortcut(keys, parentWidget());
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, way] { go(way); });
}

/// As editing by hand: the program is locked while the drives have power.
bool UndoBar::isLocked(EditedList list) const {
    return isRunning() || panel_.isForm() ||
           (list == EditedList::Program && m(key::robotPower)->getString() == word::on);
}

void UndoBar::refresh() {
    showStep(undo_, History::Way::Undo, QStringLiteral("Ctrl+Z"));
    showStep(redo_, History::Way::Redo, QStringLiteral("Ctrl+Shift+Z"));
}

void UndoBar::showStep(WrapToolButton* button, History::Way way, const QString& keys) {
    const std::optional<History::Step> step = History::instance()->next(way);
    button->setEnabled(step && !isLocked(step->page));
    button->setToolTip((step ? tr("%1：%2").arg(button->text(), step->text) : button->text()) +
                       QStringLiteral(" (%1)").arg(keys));
}

void UndoBar::go(History::Way way) {
    const std::optional<History::Step> step = History::instance()->next(way);
    if (!step) {
        return;
    }
    if (isRunning()) {
        showMessage(QMessageBox::Warning, tr("运行错误"), tr("当前不是空闲状态"));
    } else if (isLocked(step->page)) {
        tell(panel_.isForm() ? tr("请先关闭当前页面") : tr("机器人上电时不能编辑程序"));
    } else if (panel_.inView() == step->page) {
        History::instance()->go(way);
        tell((way == History::Way::Undo ? tr("已撤销：%1") : tr("已重做：%1")).arg(step->text));
    } else if (panel_.show(step->page)) {
        tell((way == History::Way::Undo ? tr("再按一次将撤销：%1") : tr("再按一次将重做：%1"))
                 .arg(step->text));
    } else {
        tell(tr("该步骤所在的页面已锁定：%1").arg(step->text));
    }
}

void UndoBar::tell(const QString& text) const {
    constexpr int shownMs = 5000;
    QToolTip::showText(undo_->mapToGlobal(QPoint(0, undo_->height())), text, undo_, QRect(), shownMs);
}

}  // namespace lumo
