#pragma once

#include "gantu/bmodule.h"

#include <QPointer>

class LumoWidget;

/// The package's business module: announces the package, installs its translation and adds its page to the
/// panel's navigation.
class LumoBModule : public gantu::BModule {
public:
    explicit LumoBModule(QObject* parent = nullptr);

    QString name() const override;
    /// Registers the page. Its key "nav" names the factory key of LumoWidgetBModule.
    void init() override;
};

/// The user-interface module of the package's page.
class LumoWidgetBModule : public gantu::BModule {
public:
    /// Makes the page too.
    explicit LumoWidgetBModule(QObject* parent = nullptr);
    ~LumoWidgetBModule() override;

    QString name() const override;
    /// The page. The module owns it, wherever the host puts it. Null when the host has deleted it.
    QWidget* wgt() override;

private:
    QPointer<LumoWidget> widget_;
};
