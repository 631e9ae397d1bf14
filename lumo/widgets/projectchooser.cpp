#include "widgets/projectchooser.h"

#include "look/dialog.h"
#include "look/scale.h"

#include <QCoreApplication>
#include <QDir>
#include <QUrl>

namespace lumo {

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(LumoWidget)
};

}  // namespace

ProjectChooser::ProjectChooser(QWidget* parent)
    : QFileDialog(parent, Text::tr("打开工程"), QDir::currentPath(), QStringLiteral("*.json")) {
    constexpr int width = 760, height = 520;
    setOption(DontUseNativeDialog);
    setOption(ReadOnly);  // no deleting, no renaming
    setAcceptMode(AcceptOpen);
    setFileMode(AnyFile);
    setDefaultSuffix(QStringLiteral("json"));
    setSidebarUrls({QUrl::fromLocalFile(QDir::currentPath()), QUrl::fromLocalFile(QDir::homePath())});
    setLabelText(Accept, Text::tr("保存"));
    setLabelText(Reject, Text::tr("取消"));
    setLabelText(LookIn, Text::tr("文件夹："));
    setLabelText(FileName, Text::tr("文件名："));
    setLabelText(FileType, Text::tr("文件类型："));
    look::dress(this);
    resize(look::px(width), look::px(height));
    connect(this, &QDialog::finished, this, &QObject::deleteLater);
}

}  // namespace lumo
