#include "app/link/linkpage.h"

#include "app/link/linktext.h"
#include "app/link/linkwatch.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "mendo/clock.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QVariant>

namespace app {

namespace {

constexpr int signPx = 20;

/// Without the date, which is today's as a rule.
QString timeOf(const QDateTime& at) {
    return at.toString(at.date() == mendo::Clock::current().now().date()
                           ? QStringLiteral("HH:mm:ss")
                           : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

}  // namespace

LinkPage::LinkPage(const LinkWatch* links, const QString& note, QWidget* parent)
    : QWidget(parent), links_(links), column_(new QVBoxLayout(this)) {
    const QString robot = links->link(bridge::LinkEnd::Robot).name;
    const QString device = links->link(bridge::LinkEnd::Device).name;
    robot_ =
        addBlock(tr("机器人控制器"), robot.isEmpty() ? tr("模拟控制器") : robot, QStringLiteral("Robot"));
    device_ = device.isEmpty() ? Block{} : addBlock(tr("输入输出设备"), device, QStringLiteral("Device"));
    auto* heading = new QLabel(tr("控制器违反的规则"));
    heading->setProperty("heading", true);
    column_->addWidget(heading);
    rules_ = addText(QStringLiteral("lblBrokenRules"));
    QLabel* const remark = addText(QStringLiteral("lblLinkNote"));
    remark->setText(note);
    remark->setProperty("caption", true);
    column_->addStretch(1);
    connect(links, &LinkWatch::changed, this, &LinkPage::refresh);
    fit();
    refresh();
}

QLabel* LinkPage::addText(const QString& objectName) {
    auto* label = new QLabel;
    label->setObjectName(objectName);
    label->setWordWrap(true);
    column_->addWidget(label);
    return label;
}

LinkPage::Block LinkPage::addBlock(const QString& heading, const QString& name, const QString& objectName) {
    auto* title = new QLabel(heading);
    title->setProperty("heading", true);
    column_->addWidget(title);
    addText(QStringLiteral("lblName") + objectName)->setText(name);
    auto* row = new QHBoxLayout;
    row->setSpacing(look::px(8));
    auto* sign = new QLabel;
    auto* state = new QLabel;
    state->setObjectName(QStringLiteral("lblLink") + objectName);
    state->setWordWrap(true);
    row->addWidget(sign, 0, Qt::AlignTop);
    row->addWidget(state, 1);
    column_->addLayout(row);
    QLabel* const loss = addText(QStringLiteral("lblLoss") + objectName);
    loss->setProperty("caption", true);
    column_->addSpacing(look::px(8));
    return {sign, state, loss};
}

void LinkPage::refresh() {
    show(robot_, bridge::LinkEnd::Robot);
    if (device_.state) {
        show(device_, bridge::LinkEnd::Device);
    }
    QStringList rows;
    for (const BrokenRule& broken : links_->broken()) {
        rows << QStringLiteral("•  ") + tr("%1：%2 次，最近 %3")
                                            .arg(brokenRuleText(broken.rule))
                                            .arg(broken.count)
                                            .arg(timeOf(broken.last));
    }
    rules_->setText(rows.isEmpty() ? tr("没有") : rows.join(QLatin1Char('\n')));
}

void LinkPage::show(const Block& block, bridge::LinkEnd end) {
    const LinkFacts& link = links_->link(end);
    const int side = look::px(signPx);
    block.sign->setPixmap(link.isUp ? look::picture(QStringLiteral("check"), side, look::green)
                                    : look::picture(QStringLiteral("warn"), side, look::amberInk));
    block.state->setText(link.isUp               ? tr("已连接")
                         : link.reason.isEmpty() ? tr("尚未连接")
                                                 : tr("无法连接：%1").arg(reasonText(link.reason)));
    block.loss->setVisible(link.isUp || link.losses > 0);
    block.loss->setText(link.losses == 0 ? tr("启动以来没有断开过")
                                         : tr("断开 %n 次，最近 %1：%2", nullptr, link.losses)
                                               .arg(timeOf(link.lostAt), reasonText(link.lostFor)));
}

void LinkPage::fit() {
    column_->setContentsMargins(0, 0, look::px(8), look::px(8));
    column_->setSpacing(look::px(4));
}

void LinkPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

}  // namespace app
