#include "app/cell/signallist.h"

#include "look/scale.h"
#include "simulator/controller.h"

#include <QGridLayout>
#include <QLabel>

#include <algorithm>
#include <tuple>

namespace app {

namespace {

constexpr int columns = 4;

/// The register or group that a signal belongs to: "LUMO_DI.#2" to "LUMO_DI", "LUMO_AO_1" to
/// "LUMO_AO", "DI3" to "DI".
QString groupOf(const QString& name) {
    if (name.contains(QLatin1Char('.'))) {
        return name.section(QLatin1Char('.'), 0, 0);
    }
    QString group = name;
    while (!group.isEmpty() && (group.back().isDigit() || group.back() == QLatin1Char('_'))) {
        group.chop(1);
    }
    return group;
}

/// The name without its group: the number of the bit, register or input.
QString captionOf(const QString& name, const QString& group) {
    QString rest = name.mid(group.size());
    while (!rest.isEmpty() && !rest.front().isDigit()) {
        rest.remove(0, 1);
    }
    return rest;
}

/// Order of the groups: the equipment's registers, the robot's own signals, other machines.
int rankOf(const QString& group) {
    if (group.startsWith(QLatin1String("LUMO_"))) {
        return 0;
    }
    return group == QLatin1String("DI") || group == QLatin1String("DO") ? 1 : 2;
}

/// Group by group, and by number where controller and device share a group.
QStringList arranged(QStringList names) {
    QStringList groups;
    for (const QString& name : qAsConst(names)) {
        groups << groupOf(name);
    }
    groups.removeDuplicates();
    const auto place = [&groups](const QString& name) {
        const QString group = groupOf(name);
        return std::make_tuple(rankOf(group), groups.indexOf(group), captionOf(name, group).toInt());
    };
    std::stable_sort(names.begin(), names.end(),
                     [&place](const QString& a, const QString& b) { return place(a) < place(b); });
    return names;
}

}  // namespace

SignalList::SignalList(SignalButton::Kind kind, sim::Controller* controller, QWidget* parent)
    : QWidget(parent),
      controller_(controller),
      column_(new QVBoxLayout(this)),
      unlinked_(new QLabel(tr("没有连接：这是最后的值"))) {
    column_->setContentsMargins(0, 0, look::px(8), look::px(8));
    unlinked_->setObjectName(QStringLiteral("lblUnlinked"));
    unlinked_->setWordWrap(true);
    column_->addWidget(unlinked_);
    connect(controller, &sim::Controller::linkChanged, this, &SignalList::refreshLink);
    refreshLink();
    const bool inputs = kind == SignalButton::Kind::Input;
    addSignals(kind, arranged(inputs ? controller->inputNames() : controller->outputNames()));
    column_->addStretch(1);
    if (inputs) {
        connect(controller, &sim::Controller::inputChanged, this,
                [this](const QString& name, bool value) { byName_[name]->setValue(value); });
    } else {
        connect(controller, &sim::Controller::outputChanged, this,
                [this](const QString& name, const QVariant& value) { byName_[name]->setValue(value); });
    }
}

void SignalList::addSignals(SignalButton::Kind kind, const QStringList& names) {
    for (const QString& name : names) {
        const QString group = groupOf(name);
        auto* button = new SignalButton(kind, name, captionOf(name, group));
        sectionOf(group).signals_.append(button);
        byName_.insert(name, button);
        if (kind == SignalButton::Kind::Input) {
            button->setValue(controller_->input(name));
            button->setEnabled(controller_->takesInput(name));
            connect(button, &SignalButton::clicked, this,
                    [this, button] { controller_->setInput(button->name(), !button->isOn()); });
        } else {
            button->setValue(controller_->output(name));
        }
    }
    for (const Section& section : qAsConst(sections_)) {
        arrange(section);
    }
}

SignalList::Section& SignalList::sectionOf(const QString& title) {
    if (sections_.isEmpty() || sections_.last().title != title) {
        auto* heading = new QLabel(title);
        heading->setProperty("heading", true);
        auto* grid = new QGridLayout;
        grid->setSpacing(look::px(4));
        column_->addWidget(heading);
        column_->addLayout(grid);
        sections_.append({title, grid, {}});
    }
    return sections_.last();
}

void SignalList::showEvent(QShowEvent* event) {
    refreshLabels();
    QWidget::showEvent(event);
}

void SignalList::refreshLink() {
    unlinked_->setHidden(controller_->isLinked());
}

void SignalList::refreshLabels() {
    const QHash<QString, AssignedPort> ports = assignedPorts();
    for (const Section& section : qAsConst(sections_)) {
        for (SignalButton* button : section.signals_) {
            button->setPort(ports.value(button->name()));
        }
        arrange(section);
    }
}

void SignalList::arrange(const Section& section) {
    int row = 0;
    for (SignalButton* button : section.signals_) {
        if (!button->label().isEmpty()) {
            section.grid->addWidget(button, row++, 0, 1, columns);
        }
    }
    int column = 0;
    for (SignalButton* button : section.signals_) {
        if (!button->label().isEmpty()) {
            continue;
        }
        const int span = button->valueText().size() > 1 ? columns / 2 : 1;
        section.grid->addWidget(button, row, column, 1, span);
        column += span;
        if (column >= columns) {
            column = 0;
            ++row;
        }
    }
}

}  // namespace app
