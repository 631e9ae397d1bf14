#pragma once

#include "app/cell/signalbutton.h"

#include <QHash>
#include <QVector>
#include <QWidget>

class QGridLayout;
class QLabel;
class QVBoxLayout;

namespace sim {
class Controller;
}

namespace app {

/// All inputs or all outputs of the controller, grouped by register, those of the equipment first. An
/// assigned signal has a row with its label; the others stand side by side.
class SignalList : public QWidget {
    Q_OBJECT
public:
    SignalList(SignalButton::Kind kind, sim::Controller* controller, QWidget* parent = nullptr);

protected:
    /// Updates the labels from the port assignment.
    void showEvent(QShowEvent* event) override;

private:
    struct Section {
        QString title;
        QGridLayout* grid = nullptr;
        QVector<SignalButton*> signals_;
    };
    void addSignals(SignalButton::Kind kind, const QStringList& names);
    Section& sectionOf(const QString& title);
    void refreshLabels();
    void refreshLink();
    static void arrange(const Section& section);

    sim::Controller* controller_;
    QVBoxLayout* column_;
    QLabel* unlinked_;
    QVector<Section> sections_;
    QHash<QString, SignalButton*> byName_;
};

}  // namespace app
