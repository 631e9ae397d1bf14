#include "panel/projectdialogs.h"

#include "executor/runmessages.h"
#include "files/resumedata.h"
#include "module/globals.h"
#include "module/host.h"
#include "panel/choicebox.h"
#include "panel/lumowidget.h"
#include "params/addparamdialog.h"
#include "widgets/messagebox.h"
#include "widgets/projectchooser.h"

namespace lumo {

namespace {

void warn(const QString& text, const QString& remedy) {
    showMessage(QMessageBox::Warning, LumoWidget::tr("提示"), text, {QString(), remedy, {}});
}

}  // namespace

ProjectDialogs::ProjectDialogs(QWidget* page, std::function<bool()> isUnsaved)
    : QObject(page), page_(page), isUnsaved_(std::move(isUnsaved)) {}

ProjectDialogs::~ProjectDialogs() {
    delete question_;
}

bool ProjectDialogs::refusedWhileRunning() {
    if (!isRunning()) {
        return false;
    }
    showMessage(QMessageBox::Warning, LumoWidget::tr("运行错误"), LumoWidget::tr("当前不是空闲状态"),
                RunMessage::notIdle().advice);
    return true;
}

void ProjectDialogs::settle(const Action& then) {
    delete question_;
    if (!isUnsaved_()) {
        then();
        return;
    }
    const QString& path = LumoWidget::filePath;
    const QString text =
        path.isEmpty() ? tr("程序有未保存的更改。") : tr("工程“%1”有未保存的更改。").arg(projectName(path));
    question_ = askChoice(this, page_, {tr("未保存的更改"), text, {tr("保存"), tr("不保存"), tr("取消")}},
                          [this, then](int answer) {
                              enum Answer { Save, Discard };
                              if (answer == Save) {
                                  saveAnd(then);
                              } else if (answer == Discard) {
                                  then();
                              }
                          });
}

/// A program without a file gets one. Cancelling its dialog cancels all.
void ProjectDialogs::saveAnd(const Action& then) {
    const QString path = LumoWidget::filePath;
    if (path.isEmpty()) {
        askName({LumoWidget::tr("另存为工程"), LumoWidget::tr("请输入另存为工程名称"),
                 "LumoWidget::LumoWidget 另存为工程 slot isok =", false, [then](const QString& name) {
                     if (lumo::saveProject(projectFileName(name))) {
                         then();
                     }
                 }});
    } else if (lumo::saveProject(path)) {
        emit projectSaved();
        then();
    }
}

void ProjectDialogs::newProject() {
    if (!refusedWhileRunning()) {
        settle([this] { askNewName(); });
    }
}

void ProjectDialogs::askNewName() {
    if (!refusedWhileRunning()) {
        askName({LumoWidget::tr("新建工程"), LumoWidget::tr("请输入新建工程名称"),
                 "LumoWidget::LumoWidget 新建工程 slot isok =", true,
                 [this](const QString& name) { createProject(name); }});
    }
}

void ProjectDialogs::saveProjectAs() {
    askName({LumoWidget::tr("另存为工程"), LumoWidget::tr("请输入另存为工程名称"),
             "LumoWidget::LumoWidget 另存为工程 slot isok =", false,
             [this](const QString& name) { copyProject(name); }});
}

void ProjectDialogs::askName(const Purpose& purpose) {
    delete nameDialog_;  // one may be left, answered with a name that was refused
    nameDialog_ = new AddParamDialog(page_);
    nameDialog_->settitlename(purpose.title);
    connect(nameDialog_, &AddParamDialog::signalAddParamIsok, this,
            [this, purpose](bool ok) { nameAnswered(purpose, ok); });
    nameDialog_->setWindowModality(Qt::WindowModal);
    nameDialog_->show();
    nameDialog_->activateWindow();
}

void ProjectDialogs::nameAnswered(const Purpose& purpose, bool ok) {
    nameDialog_->disconnect(this);
    logW() << QString::fromUtf8(purpose.logText) << QVariant(ok).toString();
    if (!ok) {
        nameDialog_->deleteLater();
        return;
    }
    const QString name = nameDialog_->name();
    switch (projectNameFault(name)) {
        case NameFault::Empty:
            showMessage(QMessageBox::NoIcon, QString(), purpose.emptyText);
            return;
        case NameFault::TooLong:
            warn(LumoWidget::tr("输入工程名过长，限制长度为20"),
                 LumoWidget::tr("请输入不超过19个字符的名称。"));
            return;
        case NameFault::Taken:
            warn(LumoWidget::tr("该工程名已存在"),
                 LumoWidget::tr("请换一个名称：同名文件已存在，或名称不能用作文件名。"));
            return;
        case NameFault::None:
            break;
    }
    nameDialog_->deleteLater();
    if (!purpose.needsIdle || !refusedWhileRunning()) {
        purpose.accept(name);
    }
}

void ProjectDialogs::createProject(const QString& name) {
    const QString path = projectFileName(name);
    if (writeProject(path, QJsonArray())) {
        loadFile(path);
    }
}

void ProjectDialogs::copyProject(const QString& name) {
    lumo::saveProject(projectFileName(name));
}

void ProjectDialogs::openProject() {
    if (!refusedWhileRunning()) {
        settle([this] { askFile(); });
    }
}

void ProjectDialogs::askFile() {
    if (refusedWhileRunning()) {
        return;
    }
    delete fileDialog_;
    fileDialog_ = new ProjectChooser(page_);
    connect(fileDialog_, &QFileDialog::fileSelected, this, &ProjectDialogs::fileSelected);
    fileDialog_->open();
}

void ProjectDialogs::fileSelected(const QString& path) {
    fileDialog_->disconnect(this);
    logW() << "LumoWidget::LumoWidget QFileDialog::fileSelected filename =" << path;
    if (!path.isEmpty() && !refusedWhileRunning()) {
        loadFile(path);
    }
}

/// A file that cannot be read changes nothing. Reading it has reported why.
void ProjectDialogs::loadFile(const QString& path) {
    const std::optional<Project> project = readProject(path);
    if (!project) {
        warn(LumoWidget::tr("无法打开工程：%1").arg(path.section(QLatin1Char('/'), -1)),
             LumoWidget::tr("窗口底部的提示说明原因和位置。当前工程保持打开。"));
        return;
    }
    showProject(path, *project);
    emit projectOpened();
}

void ProjectDialogs::restoreProject(const QString& path, const Project& project) {
    if (!refusedWhileRunning()) {
        showProject(path, project);
    }
}

void ProjectDialogs::showProject(const QString& path, const Project& project) {
    if (!path.isEmpty()) {
        emit projectChosen(path);
    }
    loadProject(this, project);
    resetResumeData(this);
    emit projectLoaded();
    if (!project.toolset.isEmpty()) {
        emit toolsetLoaded();
    }
}

void ProjectDialogs::saveProject(const QString& path) {
    if (path.isEmpty()) {
        showMessage(QMessageBox::Warning, LumoWidget::tr("警告"), LumoWidget::tr("当前没有已打开工程"),
                    {QString(), LumoWidget::tr("请先新建或打开工程。"), {}});
    } else if (lumo::saveProject(path)) {
        emit projectSaved();
        showMessage(QMessageBox::Information, LumoWidget::tr("提示"), LumoWidget::tr("保存成功"));
    }
}

}  // namespace lumo
