#include "kord/thememanager.h"

#include "mendo/modulemanager.h"

#include <QJsonObject>
#include <QWidget>

namespace kord {

namespace {

void apply(QWidget* widget, const QString& sheet, const QStringList& exclusions) {
    // Setting a style sheet re-polishes every descendant, even when it is the same sheet.
    if (!exclusions.contains(widget->objectName()) && widget->styleSheet() != sheet) {
        widget->setStyleSheet(sheet);
    }
}

}  // namespace

QString ThemeManager::genStyleSheet(const QString& jsonFile) {
    QString sheet;
    const QJsonObject theme = mendo::ModuleManager::readFromJson(jsonFile).toObject();
    for (auto rule = theme.constBegin(); rule != theme.constEnd(); ++rule) {
        const QJsonObject properties = rule.value().toObject();
        sheet += rule.key() + QLatin1String(" {");
        for (auto property = properties.constBegin(); property != properties.constEnd(); ++property) {
            sheet += QLatin1Char(' ') + property.key() + QLatin1String(": ") +
                     property.value().toVariant().toString() + QLatin1Char(';');
        }
        sheet += QLatin1String(" }\n");
    }
    return sheet;
}

void ThemeManager::setRecursiveWidgetStyleSheet(QWidget* widget, const QString& sheet,
                                                const QStringList& exclusions) {
    if (!widget) {
        return;
    }
    apply(widget, sheet, exclusions);
    const QList<QWidget*> descendants = widget->findChildren<QWidget*>();
    for (QWidget* descendant : descendants) {
        if (descendant->isWindow()) {
            apply(descendant, sheet, exclusions);
        }
    }
}

}  // namespace kord
