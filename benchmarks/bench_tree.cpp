// What the data tree costs beside Qt's own means: a signal without a tree, and the item model.

#include "sidebyside.h"

#include "mendo/modulemanager.h"

#include <QCoreApplication>
#include <QStandardItemModel>

namespace {

using mendo::ModuleObject;

/// A bare signal with the arguments of a node's, and nothing around it.
class Emitter : public QObject {
    Q_OBJECT
signals:
    void changed(const QVariant& newValue, const QVariant& oldValue, QObject* sender);
};

/// What every side calls for each notification.
class Listener : public QObject {
    Q_OBJECT
public:
    void hear(const QVariant& newValue) { sum_ += newValue.toInt(); }
    void hearIndex(const QModelIndex& index) { sum_ += index.row(); }

private:
    qint64 sum_ = 0;
};

/// A tree like the package's: a few top-level keys, some of them with children.
class Tree {
public:
    Tree() {
        for (const char* key : {"default", "port", "param", "cur_param", "program", "current", "toolset",
                                "count", "processTime", "dialog", "execute", "keypad"}) {
            root_->append(nullptr, QLatin1String(key));
        }
        for (const char* path : {"execute.line", "execute.dt", "execute.trigger.start", "execute.state"}) {
            root_->set(nullptr, QLatin1String(path), 0);
        }
    }
    ModuleObject* root() const { return root_; }

private:
    ModuleObject* root_ = m()->regist(nullptr, QStringLiteral("bench"));
};

struct Scene {
    Tree tree;
    Emitter emitter;
    Listener listener;
    ModuleObject* heard = tree.root()->r(QStringLiteral("execute.line"));
    ModuleObject* unheard = tree.root()->r(QStringLiteral("execute.state"));
    const QString heardPath = heard->path();
    const QString unheardPath = unheard->path();
    /// Nobody has asked for this node, so it has no object.
    const QString plainPath = QStringLiteral("bench.execute.dt");

    Scene() {
        QObject::connect(&emitter, &Emitter::changed, &listener, &Listener::hear);
        QObject::connect(heard, &ModuleObject::changed, &listener, &Listener::hear);
    }

    /// A value made, kept and announced: what any observable value does at least.
    bench::Side bareSignal() {
        return bench::each([this, count = 0]() mutable {
            const QVariant value(++count);
            emit emitter.changed(value, value, &listener);
        });
    }
};

void compare(const char* name, bench::Side work, const bench::Side& reference, double target) {
    bench::Plan plan;
    plan.target = target;
    bench::add(name, [work, reference, plan](benchmark::State& state) {
        bench::sideBySide(state, work, reference, plan);
    });
}

void addWrites(Scene& scene) {
    ModuleObject* const root = m()->root();
    const bench::Side bare = scene.bareSignal();
    compare("tree: write by dotted path, one listener / bare signal",
            bench::each(
                [&scene, count = 0]() mutable { m(scene.heardPath)->setValue(&scene.listener, ++count); }),
            bare, 2.4);
    compare("tree: set at dotted path, one listener / bare signal",
            bench::each([&scene, root, count = 0]() mutable {
                root->set(&scene.listener, scene.heardPath, ++count);
            }),
            bare, 2.4);
    compare("tree: write through a held node, one listener / bare signal",
            bench::each([&scene, count = 0]() mutable { scene.heard->setValue(&scene.listener, ++count); }),
            bare, 1.1);
    compare("tree: write through a held node, nobody listening / bare signal",
            bench::each([&scene, count = 0]() mutable { scene.unheard->setValue(&scene.listener, ++count); }),
            bare, 0.4);
    compare("tree: write by dotted path, nobody listening / bare signal",
            bench::each([&scene, root, count = 0]() mutable {
                root->set(&scene.listener, scene.plainPath, ++count);
            }),
            bare, 0.4);
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Scene scene;
    addWrites(scene);
    return bench::runFigures(argc, argv);
}

#include "bench_tree.moc"
