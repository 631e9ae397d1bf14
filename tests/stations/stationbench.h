#pragma once

#include "panel/pagebench.h"
#include "stations/signalsbindwidget.h"
#include "support/text.h"

namespace test {

/// Plays a script of events at stations and logs outputs, shown states, pauses, reported files and messages.
/// Times are in ms since the switch was pressed; 0 is before that.
///
/// A script: "0 closing | 100 ~DI1 | 450 power off, delete 5"; "~DI1" switches an input on for one sample,
/// act() has the other words. A log: "100 +DO1 1:asked | 200 pause 1:runs | 700 -R.bit4 1:over [message]".
class StationBench : public PageBench {
public:
    ~StationBench() override { alone.reset(); }

    /// Stations 1, 2 … with these projects ("-": none), on their page alone or in the panel. Station 1 starts
    /// by DI1 and DO1 and stops by DI11 and DO11. `fields` overwrites fields by station number.
    void renew(const QString& projects, const QByteArray& fields = "{}", bool withPanel = false) {
        follower_.reset();
        alone.reset();
        clear();
        fillTree(projects.split(' ', Qt::SkipEmptyParts), json(fields).toObject());
        if (withPanel) {
            makePage();
            click("btnBind");
        } else {
            alone = std::make_unique<SignalsBindWidget>();
            instantiatedCenterWidget()->addWidget(alone.get());
            instantiatedCenterWidget()->setCurrentWidget(alone.get());
        }
        follow();
    }

    auto* stations() const { return alone ? alone.get() : page->findChild<SignalsBindWidget*>(); }
    auto* table() const { return stations()->findChild<QTableWidget*>(); }
    QString cell(int row, int column) const { return table()->item(row, column)->text(); }
    void pressSwitch() { QTest::mousePress(child(stations(), "switchBtn"), Qt::LeftButton); }
    /// Selects a row (from 0) with a click and presses a button.
    void clickRow(int row, const char* button) {
        clickCell(table(), row, 1);
        click(button);
    }

    /// Opens the page of a row (-1: a new one), fills in fields, presses buttons and leaves it with `end`.
    void edit(int row, const QVector<QPair<const char*, QString>>& changes, const char* end = "okayBtn") {
        row < 0 ? click("btnAdd") : clickRow(row, "btnEdit");
        for (const auto& [name, text] : changes) {
            if (auto* const combo = find<QComboBox>(name)) {
                combo->setCurrentText(text);
            } else if (auto* const line = find<QLineEdit>(name)) {
                line->selectAll();
                QTest::keyClicks(line, text);
            } else {
                click(name);
            }
        }
        click(end);
    }

    /// Does something at that time, also during a run.
    void when(qint64 ms, const std::function<void()>& action) {
        QTimer::singleShot(int(startMs_ + ms - time.elapsedMs()), Qt::PreciseTimer, follower_.get(), action);
    }
    /// Presses the switch and plays the script. Returns the log.
    QString play(const QString& script, qint64 untilMs = 3000) {
        for (const QString& moment : script.split(" | ", Qt::SkipEmptyParts)) {
            for (const QString& what : moment.section(' ', 1).split(", ")) {
                plan(moment.section(' ', 0, 0).toInt(), what);
            }
        }
        pressSwitch();
        time.advance(startMs_ + untilMs - time.elapsedMs());
        const QStringList messages = boxes();
        closeBoxes();
        return messages.isEmpty() ? log : log + " [" + messages.join("; ") + "]";
    }
    void act(const QString& what) {
        const QString argument = what.section(' ', 1);
        const QHash<QString, std::function<void()>> acts{
            {"switch", [this] { pressSwitch(); }},
            {"pause", [] { pause(); }},
            {"start", [] { trigger("start", 0); }},
            {"hand", [this] { note("hand:runs"), run(); }},
            {"closing", [this] { m("lumo.cur_param")->setValue(this, 0); }},  // closings take 600 ms
            {"power", [&] { robot.setPower(argument.toLatin1()); }},
            {"robot", [&] { m("kord.r.state")->setValue(nullptr, argument); }},
            {"delete", [&] { clickRow(argument.toInt() - 1, "btnDel"); }},
            {"page", [this] { alone.reset(); }},
            {"panel", [this] { page.reset(); }},
            {"vanish",
             [this] {
                 connect(m("lumo"), &ModuleObject::added, follower_.get(), [this] { alone.reset(); });
             }},
            {"quit", [] { QMetaObject::invokeMethod(qApp, "aboutToQuit"); }},
        };
        if (what.startsWith('+') || what.startsWith('-')) {
            kordservice()->dataNode("device.io")->set(nullptr, "DI." + what.mid(1), what.startsWith('+'));
        } else {
            acts[what.section(' ', 0, 0)]();
        }
    }

    std::unique_ptr<SignalsBindWidget> alone;
    QString log;
    int runs = 0;  ///< runs that began, from any source

private:
    void fillTree(const QStringList& projects, const QJsonObject& fields) {
        QJsonArray records;
        for (int number = 1; number <= projects.size(); ++number) {
            const QString file = projects[number - 1] == "-" ? QString() : projects[number - 1] + ".json";
            const QString plain =
                "{'stationname':'S%1','filePath':'%2','time':'100','type':'上升沿','type2':'上升沿',"
                "'DI':'DI%1','DI_type':'IO','DI2':'DI1%1','DI2_type':'IO',"
                "'DO':'DO%1','DO_type':'IO','DO2':'DO1%1','DO2_type':'IO','status':''}";
            QVariantMap record = json(plain.arg(number).arg(file).toUtf8()).toObject().toVariantMap();
            record.insert(fields[QString::number(number)].toObject().toVariantMap());
            records << QJsonObject::fromVariantMap(record);
        }
        m("lumo.signalsConfig")->loadJson(this, records);
        kordservice()->dataNode("device.io")->loadJson(this, json("{'DI':{},'DO':{}}"));
        const QByteArray delay = R"([{"type":"delay","delaytime":"500"}])";
        for (int number = 1; number <= 19; ++number) {
            act(QString("-DI%1").arg(number));
            writeFile(QString("P%1.json").arg(number), delay);
        }
        load(delay);
        robot.setPower("on");
        log.clear();
        runs = 0;
        startMs_ = lastMs_ = time.elapsedMs();
    }
    void plan(int ms, const QString& what) {
        if (what.startsWith('~')) {
            plan(ms - 50, '+' + what.mid(1));
            plan(ms + 50, '-' + what.mid(1));
        } else if (ms == 0) {
            act(what);
        } else {
            when(ms, [this, what] { act(what); });
        }
    }

    void note(const QString& what) {
        const qint64 nowMs = time.elapsedMs();
        if (nowMs != lastMs_) {
            log += (log.isEmpty() ? "" : " | ") + QString::number(nowMs - startMs_);
        }
        lastMs_ = nowMs;
        log += ' ' + what;
    }
    void follow() {
        QObject* const follower = new QObject;
        follower_.reset(follower);
        connect(kordservice(), &KordService::issued, follower,
                [this](const KordCall& call) { onCall(call); });
        connect(table(), &QTableWidget::itemChanged, follower, [this](const QTableWidgetItem* item) {
            const QHash<QString, QString> words{
                {"已触发", "asked"}, {"正在运行", "runs"}, {"未触发", "over"}};
            if (item->column() == 7) {
                note(QString("%1:%2").arg(item->row() + 1).arg(words.value(item->text(), item->text())));
            }
        });
        connect(m("lumo.execute.trigger.pause"), &ModuleObject::changed, follower, [this] { note("pause"); });
        connect(m("lumo.execute.state"), &ModuleObject::changed, follower,
                [this](const QVariant& state) { runs += state == "busy" ? 1 : 0; });
        connect(m(), &mendo::ModuleManager::fileProblem, follower,
                [this](const mendo::FileProblem& problem) { note(problem.file + '!'); });
    }
    void onCall(const KordCall& call) {
        if (call.name == "device.io.out.do" || call.exec) {
            const QString bit = call.argument("type").toString() + call.argument("bias").toString();
            const QString name = call.argument("name").toString() + (bit.isEmpty() ? "" : ".") + bit;
            note((call.argument("value").toBool() ? '+' : '-') + name);
        }
    }

    qint64 startMs_ = 0, lastMs_ = 0;
    std::unique_ptr<QObject> follower_;
};

}  // namespace test
