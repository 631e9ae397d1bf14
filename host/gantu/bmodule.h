#pragma once

#include "mendo/moduleobject.h"

#include <QObject>
#include <QString>

#include <memory>

class QWidget;

namespace gantu {

/// Base of every module: what the host drives through the life of a package.
class BModule : public QObject {
    Q_OBJECT
public:
    explicit BModule(QObject* parent = nullptr);
    ~BModule() override;

    virtual QString name() const;
    /// The page of a user-interface module, null for others. Owned by the module.
    virtual QWidget* wgt();
    virtual void setup();
    virtual void afterSetup();
    virtual void init();
    virtual void afterInit();
    virtual void render();
    virtual void afterRender();
    virtual void idle();
    virtual void afterIdle();
    virtual void detach();
    virtual void beforeDetach();

    /// The module's own data node, a detached node owned by the module.
    mendo::ModuleObject* mobj() const;

private:
    std::unique_ptr<mendo::ModuleObject> mobj_;
};

}  // namespace gantu
