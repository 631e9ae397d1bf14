// A plugin for any Qt program that ends the process at the first paint of a window.
// QT_QPA_GENERIC_PLUGINS=firstpaint

#include <QCoreApplication>
#include <QEvent>
#include <QGenericPlugin>
#include <QTimer>
#include <QWidget>

#include <unistd.h>

namespace {

/// Smaller windows are hints and helpers.
constexpr int leastWidth = 600;

class FirstPaint : public QObject {
public:
    explicit FirstPaint(QObject* parent) : QObject(parent) {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::UpdateRequest && !seen_) {
            const auto* window = qobject_cast<QWidget*>(watched);
            if (window && window->isWindow() && window->width() >= leastWidth) {
                seen_ = true;
                // The update request, which paints the window, is handled before this.
                QMetaObject::invokeMethod(
                    this, [] { _exit(0); }, Qt::QueuedConnection);
            }
        }
        return false;
    }

private:
    bool seen_ = false;
};

}  // namespace

class FirstPaintPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "firstpaint.json")
public:
    QObject* create(const QString&, const QString&) override { return new FirstPaint(this); }
};

#include "firstpaint.moc"
