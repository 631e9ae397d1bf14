// A whole host: shows the package's page in a window, with a robot that reaches every target at once.
//
//     minihost FOLDER            shows the page; FOLDER has the projects and the settings
//     minihost FOLDER PROJECT    runs a project of that folder and ends; 0 if it reached its last line

#include <gantu/bmodule.h>
#include <gantu/package.h>
#include <gantu/panel.h>
#include <kord/kordservice.h>
#include <kord/managerhelper.h>
#include <mendo/log.h>
#include <mendo/modulemanager.h>

#include <QApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QLibrary>
#include <QLoggingCategory>
#include <QQueue>
#include <QStackedWidget>
#include <QTimer>

#include <cstdio>

using mendo::ModuleManager;
using mendo::ModuleObject;

/// Answers the robot service. A real bridge sends each call to its controller and writes what the controller
/// reports to the same nodes.
class Bridge : public QObject {
public:
    Bridge() {
        addRegister("LUMO_DI", "bit", "rd", 16);
        addRegister("LUMO_DO", "bit", "rdwr", 16);
        for (const char* name : {"LUMO_AO_0", "LUMO_AO_1", "LUMO_AO_2", "LUMO_AO_3"}) {
            addRegister(name, "int16", "rdwr", 1);
        }
        for (const char* name : {"DI.DI1", "DI.DI2", "DO.DO1", "DO.DO2"}) {
            kordservice()->dataNode("device.io")->set(this, name, false);
        }
        m("kord.r.mode")->setValue(this, "auto");
        m("kord.r.power")->setValue(this, "on");
        connect(kordservice(), &KordService::issued, this, &Bridge::obey);
        connect(&step_, &QTimer::timeout, this, &Bridge::arrive);
    }

private:
    struct Motion {
        QString command;
        QJsonObject posture;  ///< where it ends
    };

    void addRegister(const QString& name, const QString& type, const QString& access, int length) {
        for (int bit = 0; bit < length; ++bit) {
            kordservice()->dataNode("register.values")->set(this, mName(name, mIndex(bit)), 0);
        }
        ModuleObject* entry = m("rova.robot.register._list")->append(this);
        entry->set(this, "name", name)->set(this, "type", type);
        entry->set(this, "rw", access)->set(this, "len", length);
    }

    /// The caller deletes the argument node after the call, so copy what is needed later.
    void obey(const KordCall& call) {
        if (call.name == "move.l") {
            queue_.enqueue({call.name, call.node->c("point")->exportToJson().toObject()});
        } else if (call.name == "move.j") {
            queue_.enqueue({call.name, {{"near", call.node->c("point")->exportToJson()}}});
        } else if (call.name == "move.c") {  // one arc, or a path of several
            const ModuleObject* path = call.node->c("path");
            const ModuleObject* last = path->isNull() ? call.node : path->c(path->size() - 1);
            queue_.enqueue({call.name, last->c("point")->exportToJson().toObject()});
        } else if (call.name == "move.opr.enough") {
            m("kord.r.state")->setValue(this, "moving");
            step_.start(1);
        } else if (call.name == "move.stop" || call.name == "move.reset") {
            step_.stop();
            queue_.clear();  // dropped motions get no result
            m("kord.r.state")->setValue(this, "idle");
        } else if (call.name == "register.write") {
            write(call.argument("name").toString(), call.argument("bias").toInt(), call.argument("value"));
        } else if (call.name == "register.write_multi") {
            for (const ModuleObject* record : call.node->cmobjs()) {
                write(record->c("name")->getString(), record->c("bias")->getInt(),
                      record->c("value")->value());
            }
        } else if (call.name == "device.io.out.do") {
            const QString name = call.argument("name").toString();
            kordservice()->dataNode("device.io.DO")->set(this, name, call.argument("value").toBool());
        }
    }

    void write(const QString& name, int bias, const QVariant& value) {
        kordservice()->dataNode(mName("register.values", name, mIndex(bias)))->setValue(this, value);
    }

    /// Writes the posture, then the state, then one result, because the package continues as soon as it gets
    /// the result.
    void arrive() {
        if (queue_.isEmpty()) {
            step_.stop();
            m("kord.r.state")->setValue(this, "idle");
            return;
        }
        const Motion motion = queue_.dequeue();
        kordservice()->dataNode("sys.posture")->loadJson(this, motion.posture, true, true);
        if (queue_.isEmpty()) {
            step_.stop();
            m("kord.r.state")->setValue(this, "idle");
        }
        kordservice()->commandNode(motion.command)->setValue(this, 0);
    }

    QQueue<Motion> queue_;
    QTimer step_;
};

void showProblem(const mendo::FileProblem& problem) {
    const auto& [line, column] = problem.place;
    std::fprintf(stderr, "%s:%d:%d: %s\n", qPrintable(problem.file), line, column,
                 qPrintable(problem.text()));
}

/// Starts a program as the page does; returns when its run is over.
bool run(const QString& project) {
    QJsonArray statements;
    for (const QJsonValue& element : ModuleManager::readFromJson(project).toArray()) {
        if (element.toObject().contains("end")) {
            m("lumo.toolset")->loadJson(nullptr, element);
        } else {
            statements.append(element);
        }
    }
    m("lumo.program")->loadJson(nullptr, statements);
    m("lumo.current.openmiddlecolse")->setValue(nullptr, false);  // do not continue an open weld
    if (auto* runMode = reinterpret_cast<int*>(QLibrary(LUMO_LIBRARY).resolve("hand_or_signalbing"))) {
        *runMode = 0;
    }
    m("lumo.execute.line")->setValue(nullptr, -1);
    m("lumo.execute.trigger.start")->setValue(nullptr, 0);
    return m("lumo.execute.line")->getInt() == statements.size() - 1;
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 2 || !QDir::setCurrent(arguments[1])) {
        std::fprintf(stderr, "minihost FOLDER [PROJECT]\n");
        return 2;
    }
    mendo::LogHub::instance()->setConsole(false);
    QLoggingCategory::setFilterRules("default.debug=false");
    ModuleManager::setOutermostLoop(1);
    QObject::connect(m(), &ModuleManager::fileProblem, showProblem);
    kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, "language", "en");
    QStackedWidget pages;
    setInstantiatedCenterWidget(&pages);

    Bridge bridge;           // before the package, which looks for registers and inputs
    gantu::Package package;  // destroyed before the bridge, which answers its last commands
    QString error;
    if (!package.load(LUMO_LIBRARY, "lumo", &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    pages.addWidget(package.page(m("pel.navo.pages")->c(0)->c("nav")->getString()));
    pages.show();

    bool finished = true;
    if (arguments.size() > 2) {
        QTimer::singleShot(0, &pages, [&] {  // inside the event loop, so that quitting ends the run, too
            finished = run(arguments[2]);
            QApplication::quit();
        });
    }
    QApplication::exec();
    return finished ? 0 : 1;
}
