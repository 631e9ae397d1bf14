#pragma once

#include "telemetry/client.h"
#include "telemetry/reporter.h"

#include "app/status/statustext.h"
#include "json/fileproblem.h"

#include <QObject>

#include <memory>

class QWidget;

namespace app {

class Sheet;
struct PartCount;

/// The panel's telemetry: reads its settings, tells the broker what the cell does, and shows the page of the
/// settings. Off until an integrator has switched it on.
class TelemetryTools : public QObject {
    Q_OBJECT
public:
    /// `file`: of the settings.
    explicit TelemetryTools(const QString& file, QObject* parent = nullptr);
    ~TelemetryTools() override;

    /// Reads the settings and begins. Once, when the package is loaded; what `sources` have must outlive it.
    void begin(const telemetry::Reporter::Sources& sources);
    void setState(const CellStatus& status);
    void setParts(const QString& project, const PartCount& count);
    telemetry::Reporter* reporter() const { return reporter_.get(); }

    /// Opens the page over this.
    Sheet* open(QWidget* over);
    /// The settings without the password, as JSON; empty where there are none.
    [[nodiscard]] static QByteArray shownSettings();

signals:
    /// The settings cannot be read.
    void problem(const mendo::FileProblem& problem);

private:
    const QString file_;
    telemetry::Settings settings_;
    std::unique_ptr<telemetry::Client> client_;
    std::unique_ptr<telemetry::Reporter> reporter_;
};

}  // namespace app
