#include "app/appearance.h"

#include "gantu/panel.h"
#include "look/scale.h"
#include "look/sheet.h"
#include "look/type.h"
#include "workcell/workcell.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QHash>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QPointer>
#include <QProxyStyle>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

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

QList<QPointer<QWidget>>& dressed() {
    static QList<QPointer<QWidget>> widgets;
    return widgets;
}

/// The files of app/style together, "base.qss" first; read and filled in once for a factor.
QString frameStyleSheet() {
    static QHash<double, QString> known;
    QString& sheet = known[look::factor()];
    if (sheet.isEmpty()) {
        const QDir folder(QStringLiteral(":/app/style"));
        const QStringList names = folder.entryList();
        for (const QString& name : names) {
            QFile file(folder.filePath(name));
            if (file.open(QIODevice::ReadOnly)) {
                sheet += QString::fromUtf8(file.readAll());
            }
        }
        sheet = look::filled(sheet);
    }
    return sheet;
}

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

void dress(QWidget* widget) {
    dressed().append(widget);
    widget->setStyleSheet(frameStyleSheet());
}

void setFrameFactor(double factor) {
    if (factor == look::factor()) {
        return;
    }
    look::setFactor(factor);
    QApplication::setFont(look::font(look::Size::Text));
    dressed().removeAll(nullptr);
    const QList<QPointer<QWidget>> widgets = dressed();
    for (const QPointer<QWidget>& widget : widgets) {
        if (widget) {
            widget->setStyleSheet(frameStyleSheet());
        }
    }
}

void addClearButton(QLineEdit* field) {
    const QAction* const clear = field->addAction(
        field->style()->standardIcon(QStyle::SP_LineEditClearButton), QLineEdit::TrailingPosition);
    QObject::connect(clear, &QAction::triggered, field, &QLineEdit::clear);
}

}  // namespace app
