#include "gantu/bmodule.h"

namespace gantu {

BModule::BModule(QObject* parent) : QObject(parent), mobj_(std::make_unique<mendo::ModuleObject>()) {}

BModule::~BModule() = default;

QString BModule::name() const {
    return objectName();
}

QWidget* BModule::wgt() {
    return nullptr;
}

void BModule::setup() {}
void BModule::afterSetup() {}
void BModule::init() {}
void BModule::afterInit() {}
void BModule::render() {}
void BModule::afterRender() {}
void BModule::idle() {}
void BModule::afterIdle() {}
void BModule::detach() {}
void BModule::beforeDetach() {}

mendo::ModuleObject* BModule::mobj() const {
    return mobj_.get();
}

}  // namespace gantu
