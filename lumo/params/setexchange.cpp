#include "params/setexchange.h"

#include "files/projectfile.h"
#include "look/dialog.h"
#include "params/setuse.h"
#include "program/check.h"
#include "program/settingsrows.h"
#include "program/words.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/findingtext.h"
#include "widgets/messagebox.h"
#include "widgets/projectchooser.h"

#include <QFileInfo>
#include <QJsonObject>
#include <QPushButton>

#include <memory>
#include <optional>

using namespace prog;
using mendo::ModuleManager;

namespace lumo {

namespace {

QString nameOf(const QJsonValue& set) {
    return set.toObject().value(field::name).toString();
}

QString shortName(const QString& path) {
    return QFileInfo(path).fileName();
}

/// "steel 2 mm: the power is 150, outside 0 to 100".
QString inSet(const Finding& finding, const QJsonArray& sets) {
    const QString name = nameOf(sets.at(finding.element));
    const QString set = name.isEmpty() ? QString::number(finding.element + 1) : name;
    return QStringLiteral("%1: %2").arg(set, findingWithRemedy(finding));
}

/// The first few, a line each.
QString warningText(const Findings& findings, const QJsonArray& sets) {
    constexpr int mostShown = 4;
    QStringList lines;
    for (const Finding& finding : findings) {
        if (lines.size() == mostShown) {
            lines.append(QStringLiteral("…"));
            break;
        }
        lines.append(inSet(finding, sets));
    }
    return lines.join(QLatin1Char('\n'));
}

/// The fields that sets have; others of a file stay outside.
QJsonObject knownFields(const QJsonObject& set) {
    QJsonObject known;
    for (const FieldRow& row : parameterFields()) {
        if (set.contains(row.path)) {
            known[row.path] = set.value(row.path);
        }
    }
    return known;
}

int placeOf(const QString& name) {
    const QList<ModuleObject*> sets = m(key::param)->cmobjs();
    for (int place = 0; place < sets.size(); ++place) {
        if (sets[place]->c(field::name)->getString() == name) {
            return place;
        }
    }
    return -1;
}

}  // namespace

SetExchange::SetExchange(QWidget* page) : QObject(page), page_(page) {}

QFileDialog* SetExchange::choose(const QString& title, const QString& acceptText) {
    delete files_;
    files_ = new ProjectChooser(page_);
    files_->setWindowTitle(title);
    files_->setLabelText(QFileDialog::Accept, acceptText);
    return files_;
}

/// A box that asks, as a child of the page; a run that may wait below is not blocked.
QMessageBox* SetExchange::question(const QString& title, const QString& text) {
    delete question_;
    question_ = new QMessageBox(QMessageBox::Question, title, text, QMessageBox::NoButton, page_);
    question_->setAttribute(Qt::WA_DeleteOnClose);
    look::dress(question_);
    return question_;
}

// --- Out ------------------------------------------------------------------------------------------

void SetExchange::exportSets(int set) {
    const QJsonArray all = m(key::param)->exportToJson().toArray();
    if (all.isEmpty()) {
        showMessage(QMessageBox::Warning, tr("提示"), tr("没有可导出的参数组。"));
        return;
    }
    sets_ = set < 0 ? all : QJsonArray{all.at(set)};
    QFileDialog* const dialog = choose(tr("导出参数组"), tr("保存"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);  // its question would wait in a loop of its own
    dialog->selectFile((set < 0 ? tr("参数") : nameOf(all.at(set))) + QStringLiteral(".json"));
    connect(dialog, &QFileDialog::fileSelected, this, &SetExchange::fileToExport);
    dialog->open();
}

void SetExchange::fileToExport(const QString& path) {
    files_->disconnect(this);
    if (isSettingsFile(path)) {
        showMessage(QMessageBox::Warning, tr("提示"),
                    tr("%1 是本程序自己的文件，请换一个名称。").arg(shortName(path)));
        return;
    }
    fileName_ = path;
    if (mendo::isMissing(path)) {
        write();
        return;
    }
    QMessageBox* const box =
        question(tr("导出参数组"), tr("文件 %1 已存在，是否覆盖？").arg(shortName(path)));
    box->addButton(tr("覆盖"), QMessageBox::AcceptRole);
    box->setDefaultButton(box->addButton(tr("取消"), QMessageBox::RejectRole));
    connect(box, &QDialog::finished, this, [this, box] {
        if (box->buttonRole(box->clickedButton()) == QMessageBox::AcceptRole) {
            write();
        }
    });
    box->open();
}

void SetExchange::write() {
    if (ModuleManager::writeToJson(fileName_, sets_, true)) {
        showMessage(QMessageBox::Information, tr("提示"),
                    tr("已导出 %1 组参数到 %2。").arg(sets_.size()).arg(shortName(fileName_)));
    } else {
        showMessage(QMessageBox::Warning, tr("提示"), tr("无法写入文件：%1").arg(shortName(fileName_)));
    }
}

// --- In -------------------------------------------------------------------------------------------

void SetExchange::importSets() {
    QFileDialog* const dialog = choose(tr("导入参数组"), tr("导入"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, &SetExchange::fileToImport);
    dialog->open();
}

void SetExchange::fileToImport(const QString& path) {
    files_->disconnect(this);
    const auto refuse = [&path](const QString& why) {
        showMessage(QMessageBox::Warning, tr("导入参数组"),
                    tr("没有导入 %1：").arg(shortName(path)) + QLatin1Char('\n') + why);
    };
    const std::optional<mendo::JsonText> text = ModuleManager::readJsonText(path);
    if (!text) {
        refuse(tr("文件无法读取。"));
        return;
    }
    sets_ = text->value().toArray();
    if (sets_.isEmpty()) {
        refuse(tr("文件中没有参数组。"));
        return;
    }
    const Findings findings = checkParameters(Record(QJsonValue(sets_)));
    if (const Finding* const error = firstError(findings)) {
        refuse(inSet(*error, sets_));
        return;
    }
    QStringList clashes;
    for (int set = 0; set < sets_.size(); ++set) {
        const QString name = nameOf(sets_.at(set));
        if (name.isEmpty()) {
            refuse(tr("第 %1 组参数没有名称。").arg(set + 1));
            return;
        }
        if (isSetName(name)) {
            clashes.append(name);
        }
    }
    const QString warnings = warningText(findings, sets_);
    if (clashes.isEmpty() && warnings.isEmpty()) {
        takeIn(Clash::KeepBoth);
    } else {
        ask(clashes, warnings);
    }
}

void SetExchange::ask(const QStringList& clashes, const QString& warnings) {
    const QString text = clashes.isEmpty()
                             ? tr("仍要导入？")
                             : tr("已有同名的参数组：%1").arg(clashes.join(QStringLiteral(", ")));
    QMessageBox* const box = question(tr("导入参数组"), text);
    box->setInformativeText(warnings);
    const QPushButton* replace = nullptr;
    const QPushButton* take = nullptr;
    if (clashes.isEmpty()) {
        take = box->addButton(tr("导入"), QMessageBox::AcceptRole);
    } else {
        replace = box->addButton(tr("替换其数值"), QMessageBox::AcceptRole);
        take = box->addButton(tr("两者都保留"), QMessageBox::AcceptRole);
    }
    box->setDefaultButton(box->addButton(tr("取消"), QMessageBox::RejectRole));
    connect(box, &QDialog::finished, this, [this, box, replace, take] {
        const QAbstractButton* const pressed = box->clickedButton();
        if (pressed && (pressed == replace || pressed == take)) {
            takeIn(pressed == replace ? Clash::Replace : Clash::KeepBoth);
        }
    });
    box->open();
}

void SetExchange::takeIn(Clash clash) {
    const Edit edit(EditedList::Params, steptext::setsImported(sets_.size()));
    QList<int> lines;
    for (const QJsonValue& value : qAsConst(sets_)) {
        QJsonObject set = knownFields(value.toObject());
        const int place = clash == Clash::Replace ? placeOf(nameOf(value)) : -1;
        if (place >= 0) {
            m(key::param)->c(place)->loadJson(page_, set);
            lines += refreshCopies(page_, place);
            continue;
        }
        set[field::name] = freeSetName(nameOf(value));
        auto added = std::make_unique<ModuleObject>();
        added->loadJson(page_, set);
        if (m(key::param)->insert(page_, added.get())) {
            added.release();
        }
    }
    emit imported(lines);
    showMessage(QMessageBox::Information, tr("提示"), tr("已导入 %1 组参数。").arg(sets_.size()));
}

}  // namespace lumo
