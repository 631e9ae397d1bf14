#include "app/appearance.h"

#include "gantu/panel.h"
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

constexpr int fontPx = 14;

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
    translator()->installQMTranslator(QStringLiteral(":/app/language/app_%1.qm").arg(language));
    const QString qtName = language == QLatin1String("cn") ? QStringLiteral("zh_CN") : language;
    const QDir folder(QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    translator()->installQMTranslator(folder.filePath(QStringLiteral("qtbase_%1.qm").arg(qtName)));
}

void installStyle() {
    QApplication::setStyle(new PlainDialogs);
    QApplication::setPalette(QApplication::style()->standardPalette());
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("WenQuanYi Micro Hei")});
    font.setPixelSize(fontPx);
    QApplication::setFont(font);
}

QString frameStyleSheet() {
    QFile file(QStringLiteral(":/app/panel.qss"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void addClearButton(QLineEdit* field) {
    const QAction* const clear = field->addAction(
        field->style()->standardIcon(QStyle::SP_LineEditClearButton), QLineEdit::TrailingPosition);
    QObject::connect(clear, &QAction::triggered, field, &QLineEdit::clear);
}

}  // namespace app
