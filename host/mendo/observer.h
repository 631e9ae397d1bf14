#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

struct KordCall;

namespace mendo {

class ModuleObject;

/// Hears of every write to a node, in a tree or detached, and of every call of the robot service, also where
/// no listener is connected. It hears before the listeners do, and once more when they have returned. GUI
/// thread only.
class Observer {
public:
    Observer() = default;
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;
    virtual ~Observer();

    /// The value of the node at the relative path `below` was set; an empty path is the node itself.
    virtual void valueSet(const ModuleObject* node, const QString& below, const QVariant& value,
                          const QObject* sender) = 0;
    /// ModuleObject::trigger() of the node.
    virtual void announced(const ModuleObject* node) = 0;
    /// Value and children of the node were replaced or merged, or its children removed.
    virtual void contentSet(const ModuleObject* node, const QObject* sender) = 0;
    virtual void inserted(const ModuleObject* parent, int position, const QObject* sender) = 0;
    /// The child is still there.
    virtual void removing(const ModuleObject* parent, int position, const QObject* sender) = 0;
    virtual void moved(const ModuleObject* parent, int from, int to, const QObject* sender) = 0;
    virtual void called(const KordCall& call) = 0;
    /// The listeners of the last of these that has not returned yet have returned.
    virtual void returned() = 0;

    /// Null when none is installed.
    static Observer* current() { return current_; }
    /// Replaces the one before; null: none. Does not take ownership; an observer that is deleted is
    /// uninstalled.
    static void install(Observer* observer) { current_ = observer; }

private:
    static Observer* current_;
};

/// Tells the observer, if there is one, and at the end of the scope that the listeners have returned.
class Observed {
public:
    template <typename Tell>
    explicit Observed(Tell tell) : observer_(Observer::current()) {
        if (observer_) {
            tell(observer_);
        }
    }
    ~Observed() {
        if (observer_ && observer_ == Observer::current()) {
            observer_->returned();
        }
    }
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed&) = delete;

private:
    Observer* observer_;
};

}  // namespace mendo
