#include "app/rail/posturetable.h"

#include "app/rail/jogkeys.h"
#include "kord/kordservice.h"
#include "look/type.h"
#include "mendo/moduleobject.h"
#include "program/words.h"

#include <QGridLayout>
#include <QLabel>

namespace app {

namespace {

constexpr int rows = 3;
constexpr int between = 10;  // pixels

}  // namespace

PostureTable::PostureTable(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(2);
    for (int axis = 0; axis < int(values_.size()); ++axis) {
        auto* value = new QLabel;
        value->setObjectName(QStringLiteral("lblPosture%1").arg(axis));
        value->setAlignment(Qt::AlignRight);
        const int column = axis < rows ? 0 : 3;
        names_[size_t(axis)] = new QLabel;
        names_[size_t(axis)]->setProperty("caption", true);
        values_[size_t(axis)] = value;
        grid->addWidget(names_[size_t(axis)], axis % rows, column);
        grid->addWidget(value, axis % rows, column + 1);
        grid->setColumnStretch(column + 1, 1);
    }
    grid->setColumnMinimumWidth(2, between);
    connect(kordservice()->dataNode(prog::key::posture), &mendo::ModuleObject::changed, this,
            &PostureTable::refresh);
    refresh();
}

void PostureTable::showJoints(bool joints) {
    joints_ = joints;
    refresh();
}

void PostureTable::refresh() {
    const mendo::ModuleObject* posture = kordservice()->dataNode(prog::key::posture);
    const auto frame = joints_ ? sim::JogFrame::Joint : sim::JogFrame::Base;
    for (int axis = 0; axis < int(values_.size()); ++axis) {
        const bool length = !joints_ && axis < rows;
        const QLatin1String list = joints_  ? prog::field::near
                                   : length ? prog::field::trans
                                            : prog::field::rot;
        const double value = posture->c(list)->c(joints_ ? axis : axis % rows)->getDouble();
        names_[size_t(axis)]->setText(jogAxisName(frame, axis));
        values_[size_t(axis)]->setText(look::figure(value / jogUnit(frame, axis), 2) + QLatin1Char(' ') +
                                       (length ? tr("mm") : QStringLiteral("°")));
    }
}

}  // namespace app
