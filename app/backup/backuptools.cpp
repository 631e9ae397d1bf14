#include "app/backup/backuptools.h"

#include "app/appearance.h"
#include "app/backup/restoresheet.h"
#include "app/results/resultexport.h"
#include "look/dialog.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>

namespace app {

namespace {

QString stamped(const QString& name) {
    return QStringLiteral("%1-%2.zip")
        .arg(name, mendo::Clock::current().now().toString(QStringLiteral("yyyyMMdd-HHmm")));
}

}  // namespace

BackupTools::BackupTools(QWidget* window, QWidget* sheets, QObject* parent)
    : QObject(parent), window_(window), sheets_(sheets), export_(new ResultExport(window)) {
    export_->setParent(this);
    connect(export_, &ResultExport::written, this, [this](const QString& file) {
        emit saved(tr("已保存：%1").arg(QDir::toNativeSeparators(file)));
    });
}

void BackupTools::save(const QString& name, const QByteArray& bytes, const QString& error) {
    if (bytes.isEmpty()) {
        emit told(error);
        return;
    }
    export_->ask(name, [bytes](QIODevice* out) { return out->write(bytes) == bytes.size(); });
}

void BackupTools::backUp() {
    QString error;
    const QByteArray bytes = makeBackup(QDir::current(), mendo::Clock::current().now(), &error);
    save(stamped(QStringLiteral("lumo-backup")), bytes, error);
}

void BackupTools::saveSupport(const SupportFacts& facts) {
    QString error;
    const QByteArray bytes = packArchive(supportFiles(facts), &error);
    save(stamped(QStringLiteral("lumo-support")), bytes, error);
}

bool BackupTools::refuses() {
    if (m(prog::key::executeState)->getString() == prog::word::idle) {
        return mayRestore_ && !mayRestore_();
    }
    emit told(tr("程序运行时不能恢复备份。请等待其结束，或先按“停止”。"));
    return true;
}

void BackupTools::restore() {
    if (refuses()) {
        return;
    }
    auto* dialog = new QFileDialog(window_, tr("恢复备份"), QDir::currentPath(), QStringLiteral("*.zip"));
    dress(dialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setOption(QFileDialog::ReadOnly);  // no deleting or renaming of files
    dialog->setFileMode(QFileDialog::ExistingFile);
    look::dress(dialog);
    connect(dialog, &QFileDialog::fileSelected, this, &BackupTools::chosen);
    dialog->open();
}

void BackupTools::chosen(const QString& file) {
    if (refuses()) {
        return;
    }
    QFile archive(file);
    QString error = archive.size() > mostArchiveBytes ? tr("文件过大") : QString();
    std::optional<RestorePlan> plan;
    if (error.isEmpty() && !archive.open(QIODevice::ReadOnly)) {
        error = archive.errorString();
    }
    if (error.isEmpty()) {
        plan = readBackup(archive.readAll(), QDir::current(), &error);
    }
    if (!plan) {
        emit told(tr("无法恢复 %1：%2。未作任何更改。").arg(QDir::toNativeSeparators(file), error));
        return;
    }
    auto* sheet = new RestoreSheet(*plan, sheets_);
    connect(sheet, &RestoreSheet::agreed, this, [this, plan = *plan] { carryOut(plan); });
    sheet->open();
}

/// A program may have begun, or a file may have changed, since the question.
void BackupTools::carryOut(const RestorePlan& plan) {
    if (refuses()) {
        return;
    }
    QString keptAs, error;
    if (!restoreBackup(plan, QDir::current(), mendo::Clock::current().now(), &keptAs, &error)) {
        emit told(tr("无法恢复备份：%1。所有文件保持原样。").arg(error));
        return;
    }
    emit restored();
}

}  // namespace app
