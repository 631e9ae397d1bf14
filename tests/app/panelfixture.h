#pragma once

#include "app/appearance.h"
#include "app/dock/dockarea.h"
#include "app/header/header.h"
#include "app/panel.h"
#include "kord/kordservice.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"
#include "support/suite.h"
#include "support/text.h"
#include "support/widgets.h"

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTimer>

#include <functional>

namespace test {

/// Copies files to the working directory and makes them writable.
inline void copyHere(const QString& folder, const QStringList& names) {
    for (const QString& name : names) {
        QFile::copy(folder + "/" + name, name);
        QFile::setPermissions(name, QFile::ReadOwner | QFile::WriteOwner);
    }
}

/// Shows the panel in English, with the package loaded, in a folder with the sample settings and project
/// (seam.json). Only one object in a process.
class PanelTest : public QObject {
protected:
    using Step = std::function<void()>;
    using Moments = QVector<QPair<int, Step>>;  ///< milliseconds after the start, and what to do then

    PanelTest() {
        mendo::LogHub::instance()->setConsole(false);
        copyHere(SAMPLE, {"lumo_port.json", "lumo_param.json", "seam.json"});
        app::installLanguage("en");
        panel_ = std::make_unique<app::Panel>();
        QString error;
        if (!panel_->open(LUMO_LIBRARY, &error)) {
            qFatal("%s", qPrintable(error));
        }
        window()->resize(1280, 800);
        window()->show();
        panel_->complete();
        pass(100);
    }

    app::DockArea* docks() const { return window()->docks(); }
    app::PanelWindow* window() const { return panel_->window(); }
    sim::Controller* robot() const { return panel_->controller(); }
    /// A widget in the panel's window.
    template <typename Widget = QAbstractButton>
    Widget* find(const QString& name) const {
        if (auto* const found = window()->findChild<Widget*>(name)) {
            return found;
        }
        qFatal("no widget %s", qPrintable(name));
    }
    void click(const QString& name) const { test::click(find<QWidget>(name)); }
    QString textOf(const QString& label) const {
        return find<QLabel>(label)->text().replace(QChar::Nbsp, ' ');
    }

    static void pass(qint64 ms) { sim::VirtualTime::instance()->advance(ms); }
    /// Waits until no program runs and the robot stands.
    void waitUntilIdle() const {
        const auto still = [this] {
            return robot()->standsStill() && wordOf("lumo.execute.state") == "idle";
        };
        QVERIFY(sim::VirtualTime::instance()->advanceUntil(still, 120000));
    }
    static QString wordOf(const QString& path) { return m(path)->getString(); }
    static void set(const QString& path, const QVariant& value) { m(path)->setValue(nullptr, value); }
    static void load(const QString& path, const QByteArray& list) { m(path)->loadJson(nullptr, json(list)); }
    void write(const QString& name, int value, int bias = 0) {
        const QVariantHash arguments{{"name", name}, {"value", value}, {"bias", bias}};
        kordservice()->execCommand(this, "register.write", arguments);
    }
    void openSample() const {
        if (!panel_->openProject(sample())) {  // what the test before has changed is not saved
            QVERIFY(answerBox("Discard"));
            pass(0);
            auto* const dialog = shown<QFileDialog>();
            QVERIFY(dialog);
            child<QLineEdit>(dialog, "fileNameEdit")->setText(sample());
            QVERIFY(QMetaObject::invokeMethod(dialog, "accept"));
        }
        pass(100);
    }
    /// Starts the program at a line and waits for its end.
    static void run(int line, const Moments& moments) {
        QObject scope;
        for (const auto& moment : moments) {
            QTimer::singleShot(moment.first, Qt::PreciseTimer, &scope, moment.second);
        }
        set("lumo.execute.trigger.start", line);
        pass(0);
    }
    static QString sample() { return QDir::current().absoluteFilePath("seam.json"); }
    void setRunMode(int mode) const { *panel_->packageFlags().runMode = mode; }

    std::unique_ptr<app::Panel> panel_;
};

}  // namespace test
