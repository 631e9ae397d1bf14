#pragma once

#include "gantu/bmodule.h"

/// The package's business module: announces the package, installs its translation and adds its page
/// to the panel's navigation.
class LumoBModule : public gantu::BModule {
public:
    explicit LumoBModule(QObject* parent = nullptr);

    QString name() const override;
    /// Registers the page, whose key "nav" names the factory key of the page's module.
    void init() override;
};
