#include "app/results/resultexport.h"

#include "app/appearance.h"
#include "look/dialog.h"
#include "look/scale.h"

#include <QBuffer>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSaveFile>

namespace app {

ResultExport::ResultExport(QWidget* page) : QObject(page), page_(page) {}

void ResultExport::ask(const QString& name, const Write& write) {
    const QString ending = QFileInfo(name).suffix();
    auto* dialog =
        new QFileDialog(page_, tr("导出"), QDir::current().filePath(name), QStringLiteral("*.") + ending);
    dress(dialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setOption(QFileDialog::ReadOnly);  // no deleting or renaming of files
    // Its own question would wait in a loop of its own.
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(ending);
    look::dress(dialog);
    constexpr int width = 720, height = 480;
    dialog->resize(look::px(width), look::px(height));
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, write](const QString& file) { confirm(file, write); });
    dialog->open();
}

void ResultExport::confirm(const QString& file, const Write& write) {
    if (!QFileInfo::exists(file)) {
        writeTo(file, write);
        return;
    }
    auto* question = new QMessageBox(QMessageBox::Question, tr("导出"),
                                     tr("文件 %1 已存在，是否覆盖？").arg(QFileInfo(file).fileName()),
                                     QMessageBox::Yes | QMessageBox::No, page_);
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setDefaultButton(QMessageBox::No);
    question->setTextFormat(Qt::PlainText);
    look::dress(question);
    connect(question, &QDialog::finished, this, [this, file, write](int answer) {
        if (answer == QMessageBox::Yes) {
            writeTo(file, write);
        }
    });
    question->open();
}

void ResultExport::writeTo(const QString& file, const Write& write) {
    QBuffer content;  // the writer of PDF does not tell when a device fails
    QSaveFile out(file);
    if (content.open(QIODevice::WriteOnly) && write(&content) && out.open(QIODevice::WriteOnly) &&
        out.write(content.data()) == content.size() && out.flush() && out.commit()) {
        emit written(file);
        return;
    }
    auto* message =
        new QMessageBox(QMessageBox::Warning, tr("导出"),
                        tr("无法写入文件：%1\n%2").arg(file, out.errorString()), QMessageBox::Ok, page_);
    message->setAttribute(Qt::WA_DeleteOnClose);
    message->setTextFormat(Qt::PlainText);
    look::dress(message);
    message->open();
}

}  // namespace app
