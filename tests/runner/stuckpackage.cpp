// A package that starts a run and then waits for ever, with nothing pending: line 0, or with a page
// that keeps a timer going: line 1.

#include "gantu/bmodule.h"
#include "mendo/creatormanager.h"
#include "mendo/modulemanager.h"
#include "pel/navo.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonObject>
#include <QTimer>
#include <QVariantMap>
#include <QWidget>

using mendo::ModuleObject;

extern "C" __attribute__((visibility("default"))) int hand_or_signalbing;
int hand_or_signalbing = 0;

class LumoExecutor : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantMap waiting READ waiting NOTIFY activityChanged)
    Q_PROPERTY(int pendingSteps READ pendingSteps NOTIFY activityChanged)
    Q_PROPERTY(int depth READ depth NOTIFY activityChanged)
public:
    explicit LumoExecutor(QObject* parent) : QObject(parent) {
        connect(m("lumo.execute.trigger.start"), &ModuleObject::changed, this, &LumoExecutor::start);
    }
    QVariantMap waiting() const { return depth_ > 0 ? QVariantMap{{"kind", "move"}} : QVariantMap(); }
    int pendingSteps() const { return 0; }
    int depth() const { return depth_; }

signals:
    void activityChanged();

private:
    void start(const QVariant& line) {
        m("lumo.execute.state")->setValue(this, "busy");
        QTimer ticking;
        if (line.toInt() == 1)
            ticking.start(160);
        ++depth_;
        emit activityChanged();
        QEventLoop loop;
        loop.exec();
        --depth_;
    }

    int depth_ = 0;
};

namespace {

class StuckPage : public gantu::BModule {
public:
    explicit StuckPage(QObject* parent) : gantu::BModule(parent), page_(new QWidget) {
        const QJsonObject trigger{{"start", QJsonValue()}};
        m()->regist(this, "lumo")
            ->loadJson(this, QJsonObject{{"execute", QJsonObject{{"state", "idle"}, {"trigger", trigger}}},
                                         {"current", QJsonObject{{"line", 0}}},
                                         {"program", QJsonArray()}});
        new LumoExecutor(m("lumo"));
    }
    ~StuckPage() override { delete page_; }
    QWidget* wgt() override { return page_; }

private:
    QWidget* page_;
};

class StuckModule : public gantu::BModule {
public:
    using gantu::BModule::BModule;
    void init() override {
        pel::navo::registerPage(this, "stuck", QString(), QString(), -1)->set(this, "nav", "stuck.page");
    }
};

const bool registered = [] {
    bfactory().regist("lumo", [](QObject* parent) { return new StuckModule(parent); });
    bfactory().regist("stuck.page", [](QObject* parent) { return new StuckPage(parent); });
    return true;
}();

}  // namespace

#include "stuckpackage.moc"
