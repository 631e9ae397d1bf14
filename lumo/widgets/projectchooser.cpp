#include "widgets/projectchooser.h"

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
    constexpr QSize size(760, 520);
    setOption(DontUseNativeDialog);
    setOption(ReadOnly);  // no deleting, no renaming
    setAcceptMode(AcceptOpen);
    setFileMode(AnyFile);
    setDefaultSuffix(QStringLiteral("json"));
    setViewMode(List);
    setSidebarUrls({QUrl::fromLocalFile(QDir::currentPath()), QUrl::fromLocalFile(QDir::homePath())});
    setLabelText(Accept, Text::tr("保存"));
    setLabelText(Reject, Text::tr("取消"));
    setLabelText(LookIn, Text::tr("文件夹："));
    setLabelText(FileName, Text::tr("文件名："));
    setLabelText(FileType, Text::tr("文件类型："));
    resize(size);
    connect(this, &QDialog::finished, this, &QObject::deleteLater);
}

}  // namespace lumo
