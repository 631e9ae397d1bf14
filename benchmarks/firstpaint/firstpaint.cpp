// A plugin for any Qt program that ends the process at the first paint of a window, or at the first one that
// shows a widget of a class.
// QT_QPA_GENERIC_PLUGINS=firstpaint
// QT_QPA_GENERIC_PLUGINS=firstpaint:CLASS

#include <QCoreApplication>
#include <QEvent>
#include <QGenericPlugin>
#include <QTimer>
#include <QWidget>

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace {

/// Smaller windows are hints and helpers.
constexpr int leastWidth = 600;

class FirstPaint : public QObject {
public:
    FirstPaint(QByteArray shown, QObject* parent) : QObject(parent), shown_(std::move(shown)) {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::UpdateRequest && !seen_) {
            const auto* window = qobject_cast<QWidget*>(watched);
            if (window && window->isWindow() && window->width() >= leastWidth && shows(window)) {
                seen_ = true;
                // The update request, which paints the window, is handled before this.
                QMetaObject::invokeMethod(
                    this, [] { _exit(0); }, Qt::QueuedConnection);
            }
        }
        return false;
    }

private:
    bool shows(const QWidget* window) const {
        const QList<QWidget*> widgets =
            shown_.isEmpty() ? QList<QWidget*>() : window->findChildren<QWidget*>();
        return shown_.isEmpty() || std::any_of(widgets.begin(), widgets.end(), [this](const QWidget* widget) {
                   return widget->isVisible() && widget->inherits(shown_.constData());
               });
    }

    QByteArray shown_;  ///< a class; empty: any window
    bool seen_ = false;
};

}  // namespace

class FirstPaintPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "firstpaint.json")
public:
    QObject* create(const QString&, const QString& shown) override {
        return new FirstPaint(shown.toLatin1(), this);
    }
};

#include "firstpaint.moc"
