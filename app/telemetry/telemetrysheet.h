#pragma once

#include "app/sheet/sheet.h"
#include "telemetry/linkstatus.h"
#include "telemetry/settings.h"

#include <QTimer>

#include <functional>

class QGridLayout;
class QLineEdit;

namespace app {

class SegmentedControl;

/// The integrator's page of the telemetry: broker, encryption, login, and how the connection stands. A
/// password that is set is not shown; an empty field keeps it, unless it would go to another broker.
class TelemetrySheet : public Sheet {
    Q_OBJECT
public:
    /// `status` is asked twice a second.
    TelemetrySheet(const telemetry::Settings& settings, std::function<telemetry::LinkStatus()> status,
                   QWidget* over);

    /// These settings are in force.
    void accept(const telemetry::Settings& settings);
    /// They could not be written.
    void refuse(const mendo::FileProblem& problem);

signals:
    /// Settings without a flaw are to be kept and used.
    void storeAsked(const telemetry::Settings& settings);

private:
    void addFields();
    QLineEdit* addField(QGridLayout* grid, const QString& name, const QString& caption, const QString& text);
    static void addBeside(QGridLayout* grid, const QString& caption, QWidget* field);
    void setTls(bool used);
    void store();
    [[nodiscard]] telemetry::Settings typed() const;
    [[nodiscard]] bool goesElsewhere(const telemetry::Settings& settings) const;
    void showHints();
    void refresh();

    telemetry::Settings settings_;
    std::function<telemetry::LinkStatus()> status_;
    SegmentedControl* on_;
    SegmentedControl* tls_;
    QLineEdit* host_ = nullptr;
    QLineEdit* port_ = nullptr;
    QLineEdit* cell_ = nullptr;
    QLineEdit* user_ = nullptr;
    QLineEdit* password_ = nullptr;
    QLineEdit* caFile_ = nullptr;
    QLineEdit* certificate_ = nullptr;
    QLineEdit* key_ = nullptr;
    QLabel* hint_ = nullptr;
    QLabel* state_ = nullptr;
    QLabel* answer_ = nullptr;
    QTimer timer_;
};

}  // namespace app
