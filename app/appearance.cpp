#include "app/appearance.h"

#include "gantu/panel.h"
#include "look/sheet.h"
#include "look/type.h"
#include "workcell/workcell.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QProxyStyle>
#include <QStyle>
#include <QStyleFactory>

namespace app {

namespace {

/// Fusion without icons on dialog buttons, which some desktops add too close to the captions.
class PlainDialogs : public QProxyStyle {
public:
    PlainDialogs() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

}  // namespace

void installLanguage(const QString& language) {
    workcell::setLanguage(language);
    look::setLanguage(language);
    translator()->installQMTranslator(QStringLiteral(":/app/language/app_%1.qm").arg(language));
    const QString qtName = language == QLatin1String("cn") ? QStringLiteral("zh_CN") : language;
    const QDir folder(QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    translator()->installQMTranslator(folder.filePath(QStringLiteral("qtbase_%1.qm").arg(qtName)));
}

void installStyle() {
    QApplication::setStyle(new PlainDialogs);
    QApplication::setPalette(QApplication::style()->standardPalette());
    QApplication::setFont(look::font(look::Size::Text));
}

QString frameStyleSheet() {
    const QDir folder(QStringLiteral(":/app/style"));
    QString sheet;
    const QStringList names = folder.entryList();  // sorted, "base.qss" first
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly)) {
            sheet += QString::fromUtf8(file.readAll());
        }
    }
    return look::filled(sheet);
}

void addClearButton(QLineEdit* field) {
    const QAction* const clear = field->addAction(
        field->style()->standardIcon(QStyle::SP_LineEditClearButton), QLineEdit::TrailingPosition);
    QObject::connect(clear, &QAction::triggered, field, &QLineEdit::clear);
}

}  // namespace app
