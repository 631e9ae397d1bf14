#include "app/menu/menusheet.h"

#include "app/appearance.h"
#include "app/cell/segmentedcontrol.h"
#include "app/dock/docks.h"
#include "app/examples/examplelibrary.h"
#include "app/preferences.h"
#include "look/icon.h"
#include "look/scale.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <functional>

namespace app {

namespace {

constexpr int cardPx = 760;
constexpr int columns = 3;
constexpr int leastWidth = 1024, leastHeight = 680;  // of a window, at factor 1

struct Language {
    const char* code;
    const char* name;  ///< in the language itself
};
constexpr Language languages[] = {{"cn", "中文"}, {"en", "English"}, {"ru", "Русский"}};

/// 0: by the size of the window.
constexpr double factors[] = {0, 1, 1.125, 1.5};

}  // namespace

MenuSheet::MenuSheet(const ExampleLibrary& library, double factor, QWidget* over)
    : Sheet(QStringLiteral("menuSheet"), tr("菜单"), over),
      why_(new QLabel(tr("程序运行时，示例、语言和恢复不可用。"))) {
    setCardWidth(cardPx);
    addTools();
    addExamples(library);
    addSizes(factor);
    auto* foot = new QGridLayout;
    foot->setSpacing(look::px(8));
    addLanguages(foot);
    addTouch(foot);
    content()->addLayout(foot);
    why_->setWordWrap(true);
    content()->addWidget(why_);
    connect(m(prog::key::executeState), &mendo::ModuleObject::changed, this, &MenuSheet::refresh);
    refresh();
}

/// The next place of the grid.
QAbstractButton* MenuSheet::addEntry(QGridLayout* grid, const QString& name, const QString& icon,
                                     const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setProperty("entry", true);
    button->setIcon(look::icon(icon));
    button->setIconSize(QSize(look::px(22), look::px(22)));
    const int place = grid->count();
    grid->addWidget(button, place / columns, place % columns);
    return button;
}

void MenuSheet::addCaption(const QString& text) {
    addText(text)->setProperty("caption", true);
}

/// Each closes the menu before it acts: what it opens may be a sheet, too.
void MenuSheet::addTools() {
    const auto openDock = [this](QLatin1String dock) { return [this, dock] { emit dockAsked(dock); }; };
    const struct {
        const char* name;
        const char* icon;
        QString text;
        std::function<void()> act;
        bool whileIdle;
    } tools[] = {
        {"btnHandbook", "document", tr("手册（F1）"), [this] { emit handbookAsked(); }, false},
        {"btnResults", "table", tr("结果（F8）"), openDock(docks::results), false},
        {"btnLog", "history", tr("事件日志（F10）"), openDock(docks::log), false},
        {"btnSetup", "check", tr("首次设置"), [this] { emit setupAsked(); }, false},
        {"btnRoles", "lock", tr("密码和角色"), [this] { emit rolesAsked(); }, false},
        {"btnTelemetrySettings", "signals", tr("遥测（MQTT）"), [this] { emit telemetryAsked(); }, false},
        {"btnSupport", "export", tr("技术支持文件包…"), [this] { emit supportAsked(); }, false},
        {"btnBackup", "save", tr("备份工程和设置…"), [this] { emit backupAsked(); }, false},
        {"btnRestoreBackup", "import", tr("恢复备份…"), [this] { emit restoreAsked(); }, true},
    };
    auto* grid = new QGridLayout;
    grid->setSpacing(look::px(8));
    for (const auto& tool : tools) {
        QAbstractButton* const button =
            addEntry(grid, QLatin1String(tool.name), QLatin1String(tool.icon), tool.text);
        connect(button, &QAbstractButton::clicked, this, [this, act = tool.act] {
            dismiss();
            act();
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
    addCaption(tr("示例"));
    auto* grid = new QGridLayout;
    grid->setSpacing(look::px(8));
    for (const QString& name : names) {
        QAbstractButton* const button = addEntry(grid, QStringLiteral("btnExample_") + name,
                                                 QStringLiteral("project"), ExampleLibrary::title(name));
        whileIdle_ << button;
        connect(button, &QAbstractButton::clicked, this, [this, name] {
            dismiss();
            emit exampleChosen(name);
        });
    }
    content()->addLayout(grid);
}

/// Whether the pages have room at a factor.
bool MenuSheet::fitsWindow(double factor) const {
    const QSize size = parentWidget()->window()->size();
    return factor == 0 || (size.width() >= leastWidth * factor && size.height() >= leastHeight * factor);
}

void MenuSheet::addSizes(double factor) {
    addCaption(tr("字号和按钮的大小"));
    auto* sizes = new SegmentedControl(
        QStringLiteral("btnSize"),
        {tr("自动"), QStringLiteral("100 %"), QStringLiteral("112 %"), QStringLiteral("150 %")});
    for (int i = 0; i < int(std::size(factors)); ++i) {
        sizes->button(i)->setEnabled(fitsWindow(factors[i]));
        if (factors[i] == factor) {
            sizes->setCurrent(i);
        }
    }
    content()->addWidget(sizes);
    connect(sizes, &SegmentedControl::clicked, this, [this](int index) {
        dismiss();
        emit factorChosen(factors[index]);
    });
}

/// A caption and what it names, side by side with others.
void MenuSheet::addBeside(QGridLayout* grid, const QString& text, QWidget* choice) {
    const int column = grid->columnCount();
    auto* caption = new QLabel(text);
    caption->setProperty("caption", true);
    caption->setWordWrap(true);
    grid->addWidget(caption, 0, column, Qt::AlignBottom);
    grid->addWidget(choice, 1, column);
    grid->setColumnStretch(column, 1);
}

/// What the X of pad and keyboard has switched off.
void MenuSheet::addTouch(QGridLayout* grid) {
    const struct {
        const char* name;
        QString text;
        bool (*used)();
        void (*remember)(bool);
    } keys[] = {
        {"btnNumberPad", tr("数字键盘"), &Preferences::numberPad, &Preferences::rememberNumberPad},
        {"btnKeyboard", tr("字母键盘"), &Preferences::keyboard, &Preferences::rememberKeyboard},
    };
    auto* choice = new QWidget;
    auto* row = new QHBoxLayout(choice);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(look::px(8));
    for (const auto& key : keys) {
        auto* button = new QPushButton(key.text);
        button->setObjectName(QLatin1String(key.name));
        button->setCheckable(true);
        button->setChecked(key.used());
        row->addWidget(button);
        connect(button, &QAbstractButton::toggled, this,
                [remember = key.remember](bool on) { remember(on); });
    }
    addBeside(grid, tr("点按输入框时打开"), choice);
}

void MenuSheet::addLanguages(QGridLayout* grid) {
    QStringList names;
    for (const Language& language : languages) {
        names << QString::fromUtf8(language.name);
    }
    auto* choice = new SegmentedControl(QStringLiteral("btnLanguage"), names);
    const QString present = presentLanguage();
    for (int i = 0; i < names.size(); ++i) {
        const QString code = QLatin1String(languages[i].code);
        choice->button(i)->setObjectName(QStringLiteral("btnLanguage_") + code);
        whileIdle_ << choice->button(i);
        if (code == present) {
            choice->setCurrent(i);
        }
    }
    addBeside(grid, tr("语言（面板将重新启动）"), choice);
    connect(choice, &SegmentedControl::clicked, this, [this, present](int index) {
        const QString code = QLatin1String(languages[index].code);
        dismiss();
        if (code != present) {
            emit languageChosen(code);
        }
    });
}

void MenuSheet::refresh() {
    const bool isIdle = m(prog::key::executeState)->getString() == prog::word::idle;
    for (QAbstractButton* const button : qAsConst(whileIdle_)) {
        button->setEnabled(isIdle);
    }
    why_->setVisible(!isIdle);
}

}  // namespace app
