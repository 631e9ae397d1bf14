#pragma once

#include "mendo/moduleobject.h"

#include <QObject>
#include <QString>

#include <memory>

class QWidget;

namespace gantu {

/// Base of every module. The host calls these functions while a package starts, runs and ends.
class BModule : public QObject {
    Q_OBJECT
public:
    explicit BModule(QObject* parent = nullptr);
    ~BModule() override;

    virtual QString name() const;
    /// The page of a user-interface module, owned by it; null for other modules.
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

    /// The module's own data node, owned by the module and not part of the tree.
    mendo::ModuleObject* mobj() const;

private:
    std::unique_ptr<mendo::ModuleObject> mobj_;
};

}  // namespace gantu
