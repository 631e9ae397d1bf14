#pragma once

#include "gantu/bmodule.h"

#include <QPointer>

class LumoWidget;

/// The user-interface module of the package's page.
class LumoWidgetBModule : public gantu::BModule {
public:
    /// Makes the page too.
    explicit LumoWidgetBModule(QObject* parent = nullptr);
    ~LumoWidgetBModule() override;

    QString name() const override;
    /// The page, owned by the module wherever the host puts it; null when the host deleted it.
    QWidget* wgt() override;

private:
    QPointer<LumoWidget> widget_;
};
