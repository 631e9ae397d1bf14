// Random changes of long maps and lists and of plain copies of them, side by side.

#include "mendo/modulemanager.h"
#include "support/suite.h"
#include "support/text.h"

#include <random>

using mendo::ModuleObject;

class TestNodeModel : public QObject {
    Q_OBJECT
private:
    struct Child {
        QString name;  // of a map's child
        int value;     // tells it from all others
    };
    struct Shelf {
        QString path;
        bool isList;
        QVector<Child> children;
    };

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    ModuleObject* nodeOf(const Shelf& shelf) const { return root_->r(shelf.path); }

    void add(Shelf& shelf) {
        const QString name = shelf.isList ? QString() : QString("k%1").arg(++made_);
        const int position = below(shelf.children.size() + 1);
        const int kind = below(3);
        shelf.children.insert(kind ? shelf.children.size() : position, {name, ++made_});
        if (kind == 2) {
            const QString element = shelf.isList ? mIndex(shelf.children.size() - 1) : name;
            root_->set(nullptr, shelf.path + '.' + element, made_);
        } else if (kind == 1) {
            nodeOf(shelf)->append(nullptr, name)->setValue(nullptr, made_);
        } else {
            auto* const child = new ModuleObject(name);
            child->setValue(nullptr, made_);
            nodeOf(shelf)->insert(nullptr, child, true, position);
        }
    }

    void change(Shelf& shelf, Shelf& other, int from) {
        const int to = below(shelf.children.size());
        const int kind = below(5);
        if (kind == 0) {
            nodeOf(shelf)->reorder(nullptr, from, to);
            shelf.children.move(from, to);
            return;
        }
        Child child = shelf.children.takeAt(from);
        if (kind == 1) {
            ModuleObject* const node = nodeOf(shelf)->c(from);
            child.name = node->name();
            const int place = std::min(to, other.children.size());
            other.children.insert(place, child);
            nodeOf(other)->insert(nullptr, node, true, place);
        } else if (kind == 2) {
            delete nodeOf(shelf)->c(from);
        } else {
            nodeOf(shelf)->remove(nullptr, shelf.isList || kind == 3 ? mIndex(from) : child.name);
        }
    }

    /// Whether everything leads to the child and the child knows its place.
    bool isInPlace(const Shelf& shelf, int i) const {
        const ModuleObject* const node = nodeOf(shelf);
        ModuleObject* const child = node->c(i);
        return child->getInt() == shelf.children[i].value && child->indexInPmobj() == i &&
               child->pmobj() == node && node->c(child->name()) == child &&
               root_->r(child->path()) == child && child->nextBmobj() == node->c(i + 1) &&
               child->prevBmobj() == node->c(i - 1) &&
               (shelf.isList || child->name() == shelf.children[i].name);
    }

    std::mt19937 random_;
    std::unique_ptr<ModuleObject> root_;
    int made_ = 0;

private slots:
    void randomChanges_leaveEveryChildInItsPlace() {
        for (unsigned seed = 1; seed <= 16; ++seed) {
            random_.seed(seed);
            std::vector<Shelf> shelves = {
                {"map", false, {}}, {"map.deep", false, {}}, {"list", true, {}}, {"few", false, {}}};
            root_ = test::node("{'map': {'deep': {}}, 'list': [], 'few': {}}");
            shelves[0].children = {{"deep", 0}};
            for (int step = 1; step <= 1500; ++step) {
                Shelf& shelf = shelves[size_t(below(4))];
                // The front is where it is changed most; seldom asked, all places become wrong in between.
                const int from = below(2) ? 0 : below(std::max(shelf.children.size(), 1));
                const bool keeps = shelf.children.value(from).value == 0;
                const int most = shelf.path == "few" ? 8 : 150;
                if (keeps || (shelf.children.size() < most && below(3)))
                    add(shelf);
                else
                    change(shelf, shelves[size_t(below(4))], from);
                const int stride = step % 500 == 0 ? 1 : step % 50 == 0 ? 37 : 1000;
                for (const Shelf& checked : shelves) {
                    QCOMPARE(nodeOf(checked)->size(), checked.children.size());
                    for (int i = below(stride); i < checked.children.size(); i += stride)
                        QVERIFY2(isInPlace(checked, i),
                                 qPrintable(QString("seed %1 %2").arg(seed).arg(checked.path)));
                }
            }
            mendo::ModuleManager::purgeRemoved();
        }
    }
};

LUMO_TEST(TestNodeModel)
#include "test_nodemodel.moc"
