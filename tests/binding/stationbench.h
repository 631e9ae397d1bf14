#pragma once

#include "binding/signalsbindwidget.h"
#include "panel/pagebench.h"

#include <QJsonArray>
#include <QJsonObject>

namespace test {

/// A station's record: inputs DI1, DI2 … and outputs DO1, DO2 … by its number, stop signals from 11 on.
inline QJsonObject station(int number, const QString& project) {
    const auto named = [](const char* kind, int signal) {
        return QString::fromLatin1(kind) + QString::number(signal);
    };
    return {{"stationname", QStringLiteral("S%1").arg(number)},
            {"filePath", project},
            {"time", "100"},
            {"type", "上升沿"},
            {"type2", "上升沿"},
            {"DI", named("DI", number)},
            {"DI_type", "IO"},
            {"DI2", named("DI", number + 10)},
            {"DI2_type", "IO"},
            {"DO", named("DO", number)},
            {"DO_type", "IO"},
            {"DO2", named("DO", number + 10)},
            {"DO2_type", "IO"}};
}

/// Stations at work: the robot's power on and no waits of a closing. What the operator and the
/// stations see is written down from the moment the switch is pressed: "<ms> <what>".
class StationBench : public PageBench {
public:
    ~StationBench() override { alone.reset(); }

    /// The panel with these stations, whose projects P1.json, P2.json … wait 500 ms each.
    void renew(const QJsonArray& stations) {
        prepare(stations);
        makePage();
        click("btnBind");
        follow();
    }
    /// The page of the stations without a panel round it, which is made in no time.
    void renewAlone(const QJsonArray& stations) {
        prepare(stations);
        alone = std::make_unique<SignalsBindWidget>();
        instantiatedCenterWidget()->addWidget(alone.get());
        instantiatedCenterWidget()->setCurrentWidget(alone.get());
        follow();
    }
    /// Stations 1 to `count`, each with its own project.
    static QJsonArray count(int count) {
        QJsonArray stations;
        for (int number = 1; number <= count; ++number) {
            stations << station(number, QStringLiteral("P%1.json").arg(number));
        }
        return stations;
    }

    SignalsBindWidget* stations() const {
        return alone ? alone.get() : page->findChild<SignalsBindWidget*>();
    }
    QTableWidget* table() const { return stations()->findChild<QTableWidget*>(); }
    QString cell(int row, int column) const { return table()->item(row, column)->text(); }
    QStringList states() const {
        QStringList texts;
        for (int row = 0; row < table()->rowCount(); ++row) {
            texts << cell(row, 7);
        }
        return texts;
    }

    static void input(const QString& name, bool level) {
        kordservice()
            ->dataNode(QStringLiteral("device.io"))
            ->set(nullptr, QStringLiteral("DI.") + name, level);
    }
    void pressSwitch() {
        if (log.isEmpty()) {
            startMs_ = time.elapsedMs();
        }
        QTest::mousePress(stations()->findChild<QWidget*>(QStringLiteral("switchBtn")), Qt::LeftButton);
    }
    /// Does something `ms` after the switch was pressed, inside whatever runs then.
    void when(qint64 ms, const std::function<void()>& action) {
        QTimer::singleShot(int(startMs_ + ms - time.elapsedMs()), Qt::PreciseTimer, follower_.get(), action);
    }
    /// A start input that is on for the look at that time alone.
    void pulse(int number, qint64 lookMs) {
        const QString name = QStringLiteral("DI%1").arg(number);
        when(lookMs - 50, [name] { input(name, true); });
        when(lookMs + 50, [name] { input(name, false); });
    }
    /// Lets the time go on to `ms` after the switch; a run that is under way then comes to its end.
    void play(qint64 ms) { time.advance(startMs_ + ms - time.elapsedMs()); }
    /// Selects a row as a finger does and presses a button.
    void clickRow(int row, const char* button) {
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {},
                          table()->visualItemRect(table()->item(row, 1)).center());
        click(button);
    }
    void note(const QString& what) {
        log << QStringLiteral("%1 %2").arg(time.elapsedMs() - startMs_).arg(what);
    }
    /// Lines of the log that hold the word.
    QStringList logOf(const char* word) const { return log.filter(QString::fromUtf8(word)); }

    static constexpr char delay[] = R"([{"type":"delay","delaytime":"500"}])";

    std::unique_ptr<SignalsBindWidget> alone;
    QStringList log;

private:
    void prepare(const QJsonArray& stations) {
        follower_.reset();
        alone.reset();
        clear();
        m(QStringLiteral("lumo.signalsConfig"))->loadJson(this, stations);
        kordservice()
            ->dataNode(QStringLiteral("device.io"))
            ->loadJson(this, QJsonObject{{"DI", QJsonObject()}});
        for (int number = 1; number <= 20; ++number) {
            input(QStringLiteral("DI%1").arg(number), false);
        }
        for (int number = 1; number <= 9; ++number) {
            write(QStringLiteral("P%1.json").arg(number), delay);
        }
        ScriptedRobot::setPower("on");
        log.clear();
    }
    /// Outputs as "DO1 on" or "REG.2 on", states of rows (from 1) as "row 1 已触发", and the executor's
    /// state.
    void follow() {
        follower_ = std::make_unique<QObject>();
        connect(kordservice(), &KordService::issued, follower_.get(),
                [this](const KordCall& call) { onCall(call); });
        connect(table(), &QTableWidget::itemChanged, follower_.get(), [this](const QTableWidgetItem* item) {
            if (item->column() == 7) {
                note(QStringLiteral("row %1 %2").arg(item->row() + 1).arg(item->text()));
            }
        });
        state_ = state();
        connect(m(QStringLiteral("lumo.execute.state")), &ModuleObject::changed, follower_.get(),
                [this](const QVariant& now) {
                    if (std::exchange(state_, now.toString()) != state_) {
                        note(state_);
                    }
                });
    }
    void onCall(const KordCall& call) {
        const QString value = call.argument(QStringLiteral("value")).toBool() ? "on" : "off";
        const QString name = call.argument(QStringLiteral("name")).toString();
        if (call.name == QLatin1String("device.io.out.do")) {
            note(name + QLatin1Char(' ') + value);
        } else if (call.name == QLatin1String("register.write") && call.exec) {
            note(name + QLatin1Char('.') + call.argument(QStringLiteral("bias")).toString() +
                 QLatin1Char(' ') + value);
        }
    }

    qint64 startMs_ = 0;
    QString state_;
    std::unique_ptr<QObject> follower_;
};

}  // namespace test
