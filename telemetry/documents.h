#pragma once

#include "workcell/runrecord.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace telemetry {

// What is told, as values: made in the cell's thread, written as JSON in the network's. docs/telemetry.md has
// an example of each. Words do not depend on the panel's language; lines count from 1; 0 stands for no line.

/// When something was so.
struct Stamp {
    QDateTime at;
    std::optional<qint64> runMs;  ///< since the run under way began; none: no run

    /// Writes "at" (ISO 8601 with the offset from UTC) and "run_ms".
    void addTo(QJsonObject* json) const;
};

/// A value of prog::runmode as it is told: "hand", "station" or "step".
[[nodiscard]] QString runModeWord(int mode);

/// The program that tells.
struct InfoDocument {
    Stamp stamp;
    QString program;  ///< "lumo-panel"

    [[nodiscard]] QJsonObject json() const;
};

/// What the cell does now.
struct StateDocument {
    Stamp stamp;
    QString state = QStringLiteral("ready");  ///< a word of the panel's state block: "laser_on"
    QString project;                          ///< its name; empty: none is open
    int line = 0, lines = 0;                  ///< under way, and of the program
    QString runMode;                          ///< see runModeWord()
    bool isDry = false;
    bool isPowered = false;
    QString robotMode;  ///< the controller's word: "auto", "manual"
    bool isEmergencyStop = false;
    QString laser = QStringLiteral("off");  ///< "program", "station", "hand", "without_program"
    QString waiting;                        ///< for what the executor waits: "input"; empty: nothing
    int pausedLine = 0;                     ///< where Start goes on

    [[nodiscard]] QJsonObject json() const;
    /// Whether both say the same, whenever.
    [[nodiscard]] bool says(const StateDocument& other) const;
};

/// The statement that has begun.
struct LineDocument {
    Stamp stamp;
    QString project;
    int line = 0, lines = 0;
    QString type;  ///< the statement's word: "moveL"

    [[nodiscard]] QJsonObject json() const;
};

/// A run: when it begins, and when it is over and everything is switched off.
struct RunDocument {
    Stamp stamp;
    int number = 0;  ///< since the program was started
    QDateTime begun;
    QString project;
    QString runMode;
    bool isOver = false;
    workcell::RunRecord record;  ///< of one that is over

    [[nodiscard]] QJsonObject json() const;
    /// The seams of the record; of very many the first mostSeams.
    static constexpr int mostSeams = 500;
    [[nodiscard]] QJsonObject seamsJson() const;
};

/// What was made and welded.
struct CountersDocument {
    Stamp stamp;
    QString project;  ///< whose parts these are
    int made = 0;     ///< parts since the counter was reset
    int target = 0;   ///< 0: none
    qint64 lastMs = 0, meanMs = 0;
    QDateTime since;  ///< the totals below begin with the program
    int runs = 0, finished = 0, seams = 0;
    double weldedMm = 0, laserOnS = 0, gasS = 0, wireS = 0;

    void add(const workcell::RunRecord& record);
    [[nodiscard]] QJsonObject json() const;
};

/// What is wrong now.
struct FaultsDocument {
    Stamp stamp;
    bool isEmergencyStop = false;
    QStringList equipment;  ///< ports that report a fault: "cooling_state"
    int motionError = 0;    ///< result of the motion that failed in the last run; 0: none
    QStringList lit;        ///< equipment that was faulty while the laser was on, in the last run: "chiller"

    [[nodiscard]] QJsonObject json() const;
    [[nodiscard]] bool says(const FaultsDocument& other) const;
};

/// The nineteen ports.
struct PortsDocument {
    struct Row {
        bool isUsed = false;
        QString signal;              ///< that it is assigned to
        std::optional<int> value{};  ///< of the signal: 0 or 1, or a register; none: there is no such signal

        bool operator==(const Row& other) const {
            return isUsed == other.isUsed && signal == other.signal && value == other.value;
        }
    };
    Stamp stamp;
    QVector<Row> rows;  ///< by I_PORT

    /// Words of the inputs in use that report a fault.
    [[nodiscard]] QStringList faulty() const;
    [[nodiscard]] QJsonObject json() const;
};

}  // namespace telemetry
