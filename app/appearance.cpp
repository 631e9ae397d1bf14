#include "app/appearance.h"

#include "app/lookstyle.h"
#include "gantu/bmodule.h"
#include "gantu/panel.h"
#include "kord/managerhelper.h"
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
#include <QStyle>
#include <QVector>
#include <QWidget>

#include <algorithm>

namespace app {

namespace {

/// A widget with a style sheet, and of which files.
struct Dressed {
    QPointer<QWidget> widget;
    QStringList parts;
};

QVector<Dressed>& dressed() {
    static QVector<Dressed> widgets;
    return widgets;
}

/// Files of app/style without their ending together, "base" first; all of them without parts. Read and filled
/// in once for a factor.
QString frameStyleSheet(QStringList parts) {
    static QHash<QString, QString> known;
    QString& sheet = known[QString::number(look::factor()) + parts.join(QLatin1Char(' '))];
    if (sheet.isEmpty()) {
        const QDir folder(QStringLiteral(":/app/style"));
        if (parts.isEmpty()) {
            parts = folder.entryList().replaceInStrings(QStringLiteral(".qss"), QString());
        }
        for (const QString& part : qAsConst(parts)) {
            QFile file(folder.filePath(part + QStringLiteral(".qss")));
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

QString presentLanguage() {
    return kord::ManagerHelper::instance()->module()->mobj()->c(QStringLiteral("language"))->getString();
}

void installStyle() {
    QApplication::setStyle(new LookStyle);
    QApplication::setPalette(QApplication::style()->standardPalette());
    QApplication::setFont(look::font(look::Size::Text));
}

void dress(QWidget* widget, const QStringList& parts) {
    QVector<Dressed>& all = dressed();
    all.erase(std::remove_if(all.begin(), all.end(), [](const Dressed& one) { return !one.widget; }),
              all.end());
    all.append({widget, parts});
    widget->setStyleSheet(frameStyleSheet(parts));
}

void setFrameFactor(double factor) {
    if (factor == look::factor()) {
        return;
    }
    look::setFactor(factor);
    QApplication::setFont(look::font(look::Size::Text));
    const QVector<Dressed> all = dressed();
    for (const Dressed& one : all) {
        if (one.widget) {
            one.widget->setStyleSheet(frameStyleSheet(one.parts));
        }
    }
}

void addClearButton(QLineEdit* field) {
    const QAction* const clear = field->addAction(
        field->style()->standardIcon(QStyle::SP_LineEditClearButton), QLineEdit::TrailingPosition);
    QObject::connect(clear, &QAction::triggered, field, &QLineEdit::clear);
}

}  // namespace app
