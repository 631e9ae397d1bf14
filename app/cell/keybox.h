#pragma once

#include <QGroupBox>
#include <QSet>

namespace sim {
class Controller;
}

namespace app {

/// The keys of the end tool: reports each press and release as the pendant does, so that short and
/// long presses are told apart by whoever listens.
class KeyBox : public QGroupBox {
    Q_OBJECT
public:
    explicit KeyBox(sim::Controller* controller, QWidget* parent = nullptr);

protected:
    /// A key whose button goes away under the finger is let go.
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void report(const QString& key, bool pressed);
    void releaseAll();

    sim::Controller* controller_;
    QSet<QString> pressed_;
};

}  // namespace app
