#include "panel/lumowidget.h"

#include "executor/lumoexecutor.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "kord/thememanager.h"
#include "module/globals.h"
#include "module/host.h"
#include "module/keys.h"
#include "module/messagebox.h"

#include <QJsonArray>
#include <QJsonObject>

using mendo::ModuleManager;

namespace {

QString defaultsDocument() {
    const QString language =
        kord::ManagerHelper::instance()->module()->mobj()->c(QStringLiteral("language"))->getString();
    if (language == QLatin1String("cn")) {
        return QStringLiteral(":/lumo/lumo.json");
    }
    if (language == QLatin1String("en")) {
        return QStringLiteral(":/lumo/lumo_en.json");
    }
    return QStringLiteral(":/lumo/lumo_ru.json");
}

/// Reads a settings file whose content is a list; an empty list is stored as an empty object.
/// Undefined for a file that is missing or, which is announced, holds anything else.
QJsonValue readList(const QString& fileName) {
    QJsonValue content = ModuleManager::readFromJson(fileName);
    if (content.isObject() && content.toObject().isEmpty()) {
        return QJsonArray();
    }
    if (!content.isUndefined() && !content.isArray()) {
        emit m()->fileProblem(fileName, 0, 0, QStringLiteral("the file holds no list"));
        return QJsonValue(QJsonValue::Undefined);
    }
    return content;
}

bool isPlain(const QJsonValue& value) {
    return value.isString() || value.isBool() || value.isDouble();
}

}  // namespace

QString LumoWidget::filePath;

LumoWidget::LumoWidget(QWidget* parent) : QWidget(parent) {
    lumo::logW() << QStringLiteral("LumoWidget::LumoWidget  ui->setupUi(this) begin once--------");
    const QString sheet = kord::ThemeManager::genStyleSheet(QStringLiteral(":/UI/style.json"));
    kord::ThemeManager::setRecursiveWidgetStyleSheet(this, sheet, {});
    if (m(lumo::key::lumo)->isNull()) {
        load();
    }
}

LumoWidget::~LumoWidget() {
    lumo::logW() << QStringLiteral("LumoWidget::~LumoWidget() ~~~~~~~~");
}

void LumoWidget::load() {
    ModuleObject* root = m()->regist(this, lumo::key::lumo);
    root->loadJson(this, ModuleManager::readFromJson(defaultsDocument()));
    loadPorts();
    loadList(QStringLiteral("lumo_param.json"), lumo::key::param);
    addFourDefaultSignalsConfig();
    loadList(QStringLiteral("lumo_signalsConfig.json"), lumo::key::signalsConfig);

    auto* toolset = new ModuleObject(QStringLiteral("default_toolset"));
    toolset->copyFrom(this, m(lumo::key::toolset));
    m(lumo::key::defaults)->insert(this, toolset);
    m(lumo::key::currentProgram)->copyFrom(this, m(lumo::key::defaultProgram));
    executor = new LumoExecutor(root);
}

void LumoWidget::addFourDefaultSignalsConfig() {
    constexpr int defaultPeriodMs = 100;
    for (int number = 1; number <= 4; ++number) {
        ModuleObject* station = m(lumo::key::signalsConfig)->append(this);
        station->copyFrom(this, m(lumo::key::defaultSignalsConfig));
        station->set(this, QStringLiteral("stationname"), tr("工位") + QStringLiteral(" %1").arg(number))
            ->set(this, QStringLiteral("time"), defaultPeriodMs);
    }
}

/// The rows of the file go by position into the default rows: assignment and enable only, so that
/// labels, kinds and the number of ports stay the package's own whatever the file holds.
void LumoWidget::loadPorts() {
    const QJsonArray rows = readList(QStringLiteral("lumo_port.json")).toArray();
    const QList<ModuleObject*> ports = m(lumo::key::port)->cmobjs();
    for (int i = 0; i < rows.size() && i < ports.size(); ++i) {
        for (const QLatin1String field : {lumo::field::name, lumo::field::enable}) {
            const QJsonValue value = rows[i].toObject().value(field);
            if (isPlain(value)) {
                ports[i]->set(this, field, value.toVariant());
            }
        }
    }
}

void LumoWidget::loadList(const QString& fileName, const QString& path) {
    m(path)->loadJson(this, readList(fileName));
}

void showAlertDialog(const QString& text) {
    lumo::showMessage(QMessageBox::NoIcon, QString(), text);
}
