#include "app/menu/menusheet.h"

#include "app/examples/examplelibrary.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace app {

namespace {

constexpr int entryHeight = 48;
constexpr int columns = 2;

struct Language {
    const char* code;
    const char* name;  ///< in the language itself
};
constexpr Language languages[] = {{"cn", "中文"}, {"en", "English"}, {"ru", "Русский"}};

QString presentLanguage() {
    return kord::ManagerHelper::instance()->module()->mobj()->c(QStringLiteral("language"))->getString();
}

}  // namespace

MenuSheet::MenuSheet(const ExampleLibrary& library, QWidget* over)
    : Sheet(QStringLiteral("menuSheet"), tr("菜单"), over),
      why_(new QLabel(tr("程序运行时，示例、语言和恢复不可用。"))) {
    addTools();
    addExamples(library);
    addLanguages();
    why_->setWordWrap(true);
    content()->addWidget(why_);
    connect(m(prog::key::executeState), &mendo::ModuleObject::changed, this, &MenuSheet::refresh);
    refresh();
}

QAbstractButton* MenuSheet::entry(const QString& name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setMinimumHeight(entryHeight);
    return button;
}

/// Each closes the menu before it acts: what it opens may be a sheet, too.
void MenuSheet::addTools() {
    const struct {
        const char* name;
        QString text;
        void (MenuSheet::*chosen)();
        bool whileIdle;
    } tools[] = {
        {"btnHandbook", tr("手册（F1）"), &MenuSheet::handbookAsked, false},
        {"btnSetup", tr("首次设置"), &MenuSheet::setupAsked, false},
        {"btnRoles", tr("密码和角色"), &MenuSheet::rolesAsked, false},
        {"btnBackup", tr("备份工程和设置…"), &MenuSheet::backupAsked, false},
        {"btnRestoreBackup", tr("恢复备份…"), &MenuSheet::restoreAsked, true},
        {"btnSupport", tr("技术支持文件包…"), &MenuSheet::supportAsked, false},
    };
    auto* grid = new QGridLayout;
    int place = 0;
    for (const auto& tool : tools) {
        QAbstractButton* const button = entry(QLatin1String(tool.name), tool.text);
        grid->addWidget(button, place / columns, place % columns);
        ++place;
        connect(button, &QAbstractButton::clicked, this, [this, chosen = tool.chosen] {
            dismiss();
            emit(this->*chosen)();
        });
        if (tool.whileIdle) {
            whileIdle_ << button;
        }
    }
    content()->addLayout(grid);
}

void MenuSheet::addExamples(const ExampleLibrary& library) {
    const QStringList names = library.names();
    if (names.isEmpty()) {
        return;
    }
    addText(tr("示例"));
    auto* grid = new QGridLayout;
    int place = 0;
    for (const QString& name : names) {
        QAbstractButton* const button =
            entry(QStringLiteral("btnExample_") + name, ExampleLibrary::title(name));
        grid->addWidget(button, place / columns, place % columns);
        ++place;
        whileIdle_ << button;
        connect(button, &QAbstractButton::clicked, this, [this, name] {
            dismiss();
            emit exampleChosen(name);
        });
    }
    content()->addLayout(grid);
}

void MenuSheet::addLanguages() {
    addText(tr("语言（面板将重新启动）"));
    auto* row = new QHBoxLayout;
    const QString present = presentLanguage();
    for (const Language& language : languages) {
        const QString code = QLatin1String(language.code);
        QAbstractButton* const button =
            entry(QStringLiteral("btnLanguage_") + code, QString::fromUtf8(language.name));
        button->setProperty("primary", code == present);
        row->addWidget(button);
        whileIdle_ << button;
        connect(button, &QAbstractButton::clicked, this, [this, code, present] {
            dismiss();
            if (code != present) {
                emit languageChosen(code);
            }
        });
    }
    content()->addLayout(row);
}

void MenuSheet::refresh() {
    const bool isIdle = m(prog::key::executeState)->getString() == prog::word::idle;
    for (QAbstractButton* const button : qAsConst(whileIdle_)) {
        button->setEnabled(isIdle);
    }
    why_->setVisible(!isIdle);
}

}  // namespace app
