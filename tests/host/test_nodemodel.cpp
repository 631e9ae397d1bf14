// Random operations on a node and on a plain model of it side by side: after each one both must
// hold the same. A failing seed is named in the test's row.

#include "host/nodesupport.h"
#include "mendo/modulemanager.h"

#include <QTest>

#include <algorithm>
#include <random>
#include <vector>

using mendo::ModuleObject;

namespace {

/// The model: a container of named children, or a number.
struct Model {
    enum Kind { Value, Map, List } kind = Value;
    int value = -1;  // -1: none
    QString name;    // of a map's child
    ModuleObject* seen = nullptr;
    std::vector<Model> children;

    QJsonValue toJson() const {
        if (kind == Value || (kind == Map && children.empty() && value >= 0)) {
            return value >= 0 ? QJsonValue(value) : QJsonValue();
        }
        QJsonArray array;
        QJsonObject object;
        for (const Model& child : children) {
            array.append(child.toJson());
            object.insert(child.name, child.toJson());
        }
        return kind == List ? QJsonValue(array) : QJsonValue(object);
    }
    int find(const QString& wanted) const {
        const auto found = std::find_if(children.begin(), children.end(),
                                        [&](const Model& child) { return child.name == wanted; });
        return found == children.end() ? -1 : static_cast<int>(found - children.begin());
    }
    void forget() {
        seen = nullptr;
        for (Model& child : children) {
            child.forget();
        }
    }
    /// What a load or copy of `source` makes of this.
    void adopt(const Model& source) {
        const bool staysList =
            kind == List && source.value < 0 && source.kind != List && source.children.empty();
        std::vector<Model> old = std::exchange(children, {});
        for (const Model& sourceChild : source.children) {
            Model child;
            child.name = source.kind == Map ? sourceChild.name : QString();
            const auto same = std::find_if(old.begin(), old.end(), [&](const Model& candidate) {
                return kind == Map && source.kind == Map && candidate.name == sourceChild.name;
            });
            if (same != old.end()) {
                child = *same;
            }
            child.adopt(sourceChild);
            children.push_back(child);
        }
        kind = staysList ? List : source.kind;
        value = source.value;
    }
};

class Pair {
public:
    explicit Pair(quint32 seed) : random_(seed) { model_.seen = &node_; }

    void step();
    QString difference() const { return compare(model_, &node_); }
    QString wholeText() const { return text(&node_); }
    const ModuleObject& node() const { return node_; }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    QString key() { return QString(QLatin1Char(static_cast<char>('a' + below(14)))); }
    /// A random container of both trees, looked up by its path.
    ModuleObject* pick(Model** model);
    QJsonValue content(int levels);
    static Model modelOf(const QJsonValue& json);
    static QString compare(const Model& model, const ModuleObject* node);
    void add(ModuleObject* node, Model* model);
    void removeOrMove(ModuleObject* node, Model* model);
    void replace(ModuleObject* node, Model* model);

    std::mt19937 random_;
    ModuleObject node_;
    Model model_;
};

ModuleObject* Pair::pick(Model** model) {
    ModuleObject* node = &node_;
    *model = &model_;
    while (!(*model)->children.empty() && below(3) > 0) {
        const int position = below(static_cast<int>((*model)->children.size()));
        node = below(2) || (*model)->kind == Model::List ? node->c(position)
                                                         : node->c((*model)->children[position].name);
        *model = &(*model)->children[static_cast<std::size_t>(position)];
        (*model)->seen = node;
    }
    return node;
}

QJsonValue Pair::content(int levels) {
    const int kind = levels > 0 ? below(4) : 0;
    if (kind < 2) {
        return below(4) ? QJsonValue(below(100)) : QJsonValue();
    }
    QJsonArray array;
    QJsonObject object;
    for (int i = below(12); i > 0; --i) {
        array.append(content(levels - 1));
        object.insert(key(), content(levels - 1));
    }
    return kind == 2 ? QJsonValue(array) : QJsonValue(object);
}

Model Pair::modelOf(const QJsonValue& json) {
    Model model;
    if (json.isDouble()) {
        model.value = json.toInt();
    } else if (json.isArray()) {
        model.kind = Model::List;
        for (const QJsonValue element : json.toArray()) {
            model.children.push_back(modelOf(element));
        }
    } else if (json.isObject()) {
        model.kind = Model::Map;
        const QJsonObject object = json.toObject();
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            model.children.push_back(modelOf(entry.value()));
            model.children.back().name = entry.key();
        }
    }
    return model;
}

/// Where the two differ; empty when nowhere.
QString Pair::compare(const Model& model, const ModuleObject* node) {
    const QString where = QLatin1Char('/') + node->path();
    if (model.seen && model.seen != node) {
        return where + QStringLiteral(": another object");
    }
    if (node->getInt(-1) != model.value || node->size() != static_cast<int>(model.children.size()) ||
        node->isList() != (model.kind == Model::List)) {
        return where + QStringLiteral(": value, size or kind");
    }
    const ModuleObject* before = ModuleObject::null();
    for (int i = 0; i < node->size(); ++i) {
        const Model& expected = model.children[static_cast<std::size_t>(i)];
        const ModuleObject* child = node->c(i);
        if (child->indexInPmobj() != i || child->prevBmobj() != before || node->c(child->name()) != child) {
            return where + QStringLiteral(": place of child %1").arg(i);
        }
        if (model.kind == Model::Map && child->name() != expected.name) {
            return where + QStringLiteral(": name of child %1").arg(i);
        }
        before = child;
        const QString deeper = compare(expected, child);
        if (!deeper.isEmpty()) {
            return deeper;
        }
    }
    return QString();
}

void Pair::add(ModuleObject* node, Model* model) {
    const QString name = model->kind == Model::List ? QString() : key();
    if (model->kind == Model::Value) {
        model->kind = Model::Map;
    }
    const int taken = model->kind == Model::Map ? model->find(name) : -1;
    Model child;
    child.name = name;
    if (below(2)) {
        if (taken < 0) {
            child.seen = node->append(nullptr, name);
            model->children.push_back(child);
        }
        return;
    }
    const int size = static_cast<int>(model->children.size()) - (taken >= 0 ? 1 : 0);
    const int index = below(size + 1);
    child.seen = new ModuleObject(name);
    child.seen->setValue(nullptr, child.value = below(100));
    node->insert(nullptr, child.seen, true, index);
    if (taken >= 0) {
        model->children.erase(model->children.begin() + taken);
    }
    model->children.insert(model->children.begin() + index, child);
}

void Pair::removeOrMove(ModuleObject* node, Model* model) {
    if (model->children.empty()) {
        return;
    }
    const int size = static_cast<int>(model->children.size());
    const int from = below(size);
    Model child = model->children[static_cast<std::size_t>(from)];
    model->children.erase(model->children.begin() + from);
    if (below(2)) {
        const int to = below(size);
        node->reorder(nullptr, from, to);
        model->children.insert(model->children.begin() + to, child);
    } else {
        node->remove(nullptr, model->kind == Model::Map ? child.name : mIndex(from));
    }
}

void Pair::replace(ModuleObject* node, Model* model) {
    if (below(3) == 0) {
        Model* source = nullptr;
        const ModuleObject* sourceNode = pick(&source);
        const Model copied = *source;
        node->copyFrom(nullptr, sourceNode);
        model->adopt(copied);
    } else {
        const QJsonValue json = content(3);
        node->loadJson(nullptr, json);
        model->adopt(modelOf(json));
    }
}

void Pair::step() {
    Model* model = nullptr;
    ModuleObject* node = pick(&model);
    switch (below(10)) {
        case 0:
            replace(node, model);
            break;
        case 1:
            node->setValue(nullptr, model->value = below(100));
            break;
        case 2: {
            const QString name = key();
            node->set(nullptr, name + QLatin1String(".#0"), 5, model->kind != Model::List);
            if (model->kind != Model::List && model->find(name) < 0) {
                Model leaf, list;
                leaf.value = 5;
                list.kind = Model::List;
                list.name = name;
                list.children = {leaf};
                model->kind = Model::Map;
                model->children.push_back(list);
            } else if (model->kind != Model::List) {
                Model& list = model->children[static_cast<std::size_t>(model->find(name))];
                if (list.children.empty()) {
                    list.kind = Model::List;
                    list.children.resize(1);
                }
                list.children[0].value = 5;
            }
            break;
        }
        case 3:
        case 4:
        case 5:
            removeOrMove(node, model);
            break;
        default:
            add(node, model);
    }
}

}  // namespace

class TestNodeModel : public QObject {
    Q_OBJECT
private slots:
    void randomOperations_data() {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 40; ++seed) {
            QTest::addRow("seed %u", seed) << seed;
        }
    }
    void randomOperations() {
        QFETCH(quint32, seed);
        Pair pair(seed);
        for (int i = 0; i < 300; ++i) {
            pair.step();
            // Looking makes objects: most of the time the tree is left with the records it has.
            if (i % 10 == 9) {
                const QString difference = pair.difference();
                QVERIFY2(difference.isEmpty(),
                         qPrintable(QStringLiteral("step %1 %2").arg(i).arg(difference)));
            }
        }
        mendo::ModuleManager::purgeRemoved();
    }
};

QTEST_GUILESS_MAIN(TestNodeModel)
#include "test_nodemodel.moc"
