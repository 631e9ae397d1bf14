#include "panel/lumowidgetbmodule.h"

#include "panel/lumowidget.h"

LumoWidgetBModule::LumoWidgetBModule(QObject* parent)
    : gantu::BModule(parent), widget_(new LumoWidget(nullptr)) {}

LumoWidgetBModule::~LumoWidgetBModule() {
    delete widget_;
}

QString LumoWidgetBModule::name() const {
    return QStringLiteral("lumowidget");
}

QWidget* LumoWidgetBModule::wgt() {
    return widget_;
}
