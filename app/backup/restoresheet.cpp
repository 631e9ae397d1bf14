#include "app/backup/restoresheet.h"

#include "look/scale.h"

#include <QAbstractButton>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int listHeight = 240;

QString listText(const QString& title, const QStringList& names) {
    return names.isEmpty() ? QString() : title + QLatin1Char('\n') + names.join(QStringLiteral(", "));
}

}  // namespace

RestoreSheet::RestoreSheet(const RestorePlan& plan, QWidget* over)
    : Sheet(QStringLiteral("restoreSheet"), tr("恢复备份"), over) {
    addText(tr("备份时间：%1").arg(plan.made.toString(QStringLiteral("yyyy-MM-dd HH:mm"))));
    QStringList parts{listText(tr("将被替换："), plan.replaced), listText(tr("将新增："), plan.added),
                      listText(tr("内容相同："), plan.unchanged),
                      listText(tr("不在备份中，保持不变："), plan.kept)};
    parts.removeAll(QString());
    auto* list = new QLabel(parts.join(QStringLiteral("\n\n")));
    list->setObjectName(QStringLiteral("lblRestoreList"));
    list->setTextFormat(Qt::PlainText);
    list->setWordWrap(true);
    list->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto* area = new QScrollArea;
    area->setWidget(list);
    area->setWidgetResizable(true);
    area->setFixedHeight(look::px(listHeight));
    content()->addWidget(area);
    addText(tr("现有文件会先保存在同一文件夹的 before-restore-….zip 中。随后面板将重新启动。"));
    const QAbstractButton* const agree = addButton(QStringLiteral("btnRestore"), tr("恢复"), true);
    connect(agree, &QAbstractButton::clicked, this, [this] {
        dismiss();
        emit agreed();
    });
}

}  // namespace app
