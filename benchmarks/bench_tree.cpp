// Time of the data tree compared with a bare Qt signal and with Qt's item model.

#include "sidebyside.h"

#include "mendo/modulemanager.h"

#include <QCoreApplication>
#include <QStandardItemModel>

#include <memory>
#include <vector>

namespace {

using mendo::ModuleManager;
using mendo::ModuleObject;

/// An object with the signal of a node and nothing else.
class Emitter : public QObject {
    Q_OBJECT
signals:
    void changed(const QVariant& newValue, const QVariant& oldValue, QObject* sender);
};

/// The slot called for each notification.
class Listener : public QObject {
    Q_OBJECT
public:
    void onChanged() { ++count_; }

private:
    qint64 count_ = 0;
};

/// Nodes of the tree, and for each a bare emitter and an item; each with a listener or none.
class Targets {
public:
    explicit Targets(const QStringList& names, bool listening = true) {
        for (const QString& name : names) {
            paths.push_back(name);
            nodes.push_back(m(name));
            emitters.push_back(std::make_unique<Emitter>());
            if (listening) {
                QObject::connect(nodes.back(), &ModuleObject::changed, &listener, &Listener::onChanged);
            }
            QObject::connect(emitters.back().get(), &Emitter::changed, &listener, &Listener::onChanged);
            model.appendRow(new QStandardItem);
        }
        QObject::connect(&model, &QAbstractItemModel::dataChanged, &listener, &Listener::onChanged);
        for (int row = 0; row < model.rowCount(); ++row) {
            items.push_back(model.index(row, 0));
        }
    }

    /// The next node.
    std::size_t next() {
        place_ = place_ + 1 < paths.size() ? place_ + 1 : 0;
        return place_;
    }

    Listener listener;
    std::vector<QString> paths;
    std::vector<ModuleObject*> nodes;
    std::vector<std::unique_ptr<Emitter>> emitters;
    QStandardItemModel model;
    std::vector<QModelIndex> items;

private:
    std::size_t place_ = 0;
};

/// Writes a new value to one node after the other.
template <typename Write>
bench::Side inTurn(Targets& targets, Write write) {
    return bench::each([&targets, write, value = 0]() mutable { write(targets.next(), ++value); });
}

bench::Side bareSignal(Targets& targets) {
    return inTurn(targets, [&targets](std::size_t place, int number) {
        const QVariant value(number);
        emit targets.emitters[place]->changed(value, value, &targets.listener);
    });
}

bench::Side writeByPath(Targets& targets) {
    return inTurn(targets, [&targets](std::size_t place, int number) {
        m(targets.paths[place])->setValue(&targets.listener, number);
    });
}

bench::Side setAtPath(Targets& targets) {
    ModuleObject* const root = m()->root();
    return inTurn(targets, [&targets, root](std::size_t place, int number) {
        root->set(&targets.listener, targets.paths[place], number);
    });
}

bench::Side writeHeld(Targets& targets) {
    return inTurn(targets, [&targets](std::size_t place, int number) {
        targets.nodes[place]->setValue(&targets.listener, number);
    });
}

bench::Side writeItem(Targets& targets) {
    return inTurn(targets, [&targets](std::size_t place, int number) {
        targets.model.setData(targets.items[place], number);
    });
}

void compare(const char* name, const bench::Side& work, const bench::Side& reference, double target) {
    bench::Plan plan;
    plan.target = target;
    bench::add(name, [work, reference, plan](benchmark::State& state) {
        bench::sideBySide(state, work, reference, plan);
    });
}

/// The package's tree at the start, with a very large number of parameter sets.
QStringList fillTree() {
    constexpr int sets = 1000;
    ModuleObject* const lumo = m()->regist(nullptr, QStringLiteral("lumo"));
    lumo->loadJson(nullptr, ModuleManager::readFromJson(QStringLiteral(DEFAULTS)));
    m()->root()->set(nullptr, QStringLiteral("kord.r.power"), 0);
    QStringList many;
    for (int number = 0; number < sets; ++number) {
        for (const char* row : {"power", "frequency"}) {
            many << QStringLiteral("lumo.param.#%1.%2").arg(number).arg(QLatin1String(row));
            m()->root()->set(nullptr, many.back(), 0);
        }
    }
    return many;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Targets many(fillTree());
    // Nodes that a run writes, and a node without a listener for each.
    const QStringList written = {"lumo.execute.line",
                                 "lumo.current.line",
                                 "lumo.current.programtype",
                                 "lumo.execute.state",
                                 "lumo.execute.trigger.start",
                                 "lumo.cur_param",
                                 "lumo.current.openmiddlecolse",
                                 "kord.r.power"};
    QStringList silent;
    for (const QString& path : written) {
        silent << path + QStringLiteral("_too");
        m()->root()->set(nullptr, silent.back(), 0);
    }
    Targets usual(written);
    Targets unheard(silent, false);
    const bench::Side bare = bareSignal(usual);
    compare("tree: write by dotted path, one listener / bare signal", writeByPath(usual), bare, 2.4);
    compare("tree: set at a dotted path, one listener / bare signal", setAtPath(usual), bare, 2.4);
    compare("tree: write by dotted path, one of 2000 targets / bare signal of one of 2000", writeByPath(many),
            bareSignal(many), 2.4);
    compare("tree: write through a held node, one listener / bare signal", writeHeld(usual), bare, 1.1);
    compare("tree: write through a held node, nobody listening / bare signal", writeHeld(unheard), bare, 0.4);
    compare("tree: write by dotted path, nobody listening / bare signal", writeByPath(unheard), bare, 0.4);
    compare("tree: write by dotted path / item model's setData, one listener each", writeByPath(usual),
            writeItem(usual), 1.0);
    return bench::runFigures(argc, argv);
}

#include "bench_tree.moc"
