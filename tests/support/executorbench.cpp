#include "support/executorbench.h"

#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "mendo/log.h"
#include "panel/lumowidget.h"
#include "support/ports.h"
#include "support/text.h"

using mendo::ModuleObject;

namespace test {

namespace {

const char* const plainSet =
    "{'name':'A','power':50,'frequency':40,'ratio':30,'speed':25,'increase_time':200,'decrease_time':200,"
    "'stay_time':200,'close_delay':200,'open_time':200,'open_interval':0,'delay_before_blow':200,"
    "'delay_after_blow':200,'move_wire_time':200,'stop_wire_time':200,'give_wire_time':200}";

QJsonObject pointAt(const QString& numbers) {
    QJsonArray trans;
    for (const QString& number : numbers.split(',')) {
        trans.append(number.toDouble());
    }
    return {{"trans", trans}};
}

QJsonObject statementOf(const QString& text) {
    static const QHash<QString, QString> mainFields{{"delay", "delaytime"},
                                                    {"open", "index"},
                                                    {"param", "index"},
                                                    {"setDO", "doName"},
                                                    {"waitDI", "diName"}};
    QStringList words = text.simplified().split(' ');
    const QString type = words.takeFirst();
    QJsonObject statement{{"type", type}};
    if (type == "setDO" || type == "waitDI") {
        statement.insert(type.right(2) + "_type", "IO");
    }
    for (const QString& word : words) {
        const QString name = word.contains('=') ? word.section('=', 0, 0) : mainFields.value(type);
        const QString value = word.section('=', -1);
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        if (word == "off") {
            statement.insert("execute", false);
        } else if (name == "to" || name == "to1") {
            statement.insert(name == "to" ? "point" : "point1", pointAt(value));
        } else {
            statement.insert(name, isNumber ? QJsonValue(number) : QJsonValue(value));
        }
    }
    return statement;
}

QJsonArray statementsOf(const QByteArray& program) {
    if (program.trimmed().startsWith('[')) {
        return json(program).toArray();
    }
    QJsonArray statements;
    for (const QString& statement : QString(program).split(';', Qt::SkipEmptyParts)) {
        statements.append(statementOf(statement));
    }
    return statements;
}

/// A record with the fields of `standard` that it lacks, also in its maps.
QJsonObject completed(QJsonObject record, const QJsonObject& standard) {
    for (auto field = standard.begin(); field != standard.end(); ++field) {
        const QJsonValue own = record.value(field.key());
        record[field.key()] = own.isObject()      ? completed(own.toObject(), field->toObject())
                              : own.isUndefined() ? QJsonValue(*field)
                                                  : own;
    }
    return record;
}

}  // namespace

ExecutorBench::ExecutorBench() : time(*sim::VirtualTime::instance()) {
    mendo::LogHub::instance()->setConsole(false);
    kord::ManagerHelper::instance()->module()->mobj()->set(this, "language", "cn");
    center_ = std::make_unique<QStackedWidget>();
    center_->addWidget(new QWidget);
    setInstantiatedCenterWidget(center_.get());
    center_->show();
    LumoWidget page;  // makes the tree and the executor, which outlive the page
    robot.setParent(nullptr);
}

void ExecutorBench::reset() {
    qDeleteAll(actionScope_.children());
    actions_.clear();
    closeBoxes();
    const auto write = [this](const char* key, const QVariant& value) { m(key)->setValue(this, value); };
    write("lumo.execute.state", "idle");
    write("lumo.current.openmiddlecolse", false);
    write("lumo.current.line", 0);
    m("lumo.current.pausepoint")->clear(this);
    write("lumo.execute.line", -1);
    write("lumo.execute.dt", 20);
    write("lumo.allWeldBtnstatus.weldbtn", true);
    write("lumo.allWeldBtnstatus.handweldbtn", false);
    write("lumo.cur_param", -1);
    m("lumo.program")->loadJson(this, QJsonArray());
    m("lumo.param")->loadJson(this, QJsonArray{json(plainSet)});
    for (int port = 0; port < 19; ++port) {
        m("lumo.port")->c(port)->set(this, "name", portNames[port]);
        enablePort(port, true);
    }
    robot.reset();
}

void ExecutorBench::load(const QByteArray& program) {
    m("lumo.program")->loadJson(this, statementsOf(program));
}

void ExecutorBench::loadSound(const QByteArray& program) {
    const QJsonObject move = json(
                                 "{'point':{'trans':[0,0,0],'rot':[0,0,0],'near':[0,0,0,0,0,0]},'speed':50,"
                                 "'zone':0,'toolset':{}}")
                                 .toObject();
    QJsonArray statements = statementsOf(program);
    for (QJsonValueRef statement : statements) {
        const QString type = statement.toObject().value("type").toString();
        if (type.startsWith("move")) {
            statement = completed(statement.toObject(), move);
        } else if (type == "open") {
            statement = completed(statement.toObject(), {{"index", 0}, {"weldspeed", 20}});
        }
    }
    m("lumo.program")->loadJson(this, statements);
}

void ExecutorBench::setParam(const char* field, double value, int index) {
    ModuleObject* sets = m("lumo.param");
    while (sets->cmobjCount() <= index) {
        sets->append(this)->copyFrom(this, sets->c(0));
    }
    sets->c(index)->set(this, field, value);
}

void ExecutorBench::begin() {
    robot.mark();
    for (const auto& [ms, action] : qAsConst(actions_)) {
        auto* timer = new QTimer(&actionScope_);
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, timer, action);
        timer->start(ms);
    }
    actions_.clear();
}

void ExecutorBench::run(int line, int mode) {
    hand_or_signalbing = mode;
    begin();
    trigger("start", line);
}

void ExecutorBench::once(int line, bool withSender) {
    hand_or_signalbing = 2;
    begin();
    m("lumo.execute.trigger.once")->setValue(withSender ? this : nullptr, line);
}

void ExecutorBench::waitUntilIdle() {
    time.advanceUntil([] { return executor->pendingSteps() == 0 && executor->depth() == 0; }, 100000);
}

bool sameLog(const QStringList& actual, const QStringList& expected) {
    if (actual == expected) {
        return true;
    }
    qWarning("%-42s | %s", "seen", "expected");
    for (int i = 0; i < qMax(actual.size(), expected.size()); ++i) {
        const bool same = actual.value(i) == expected.value(i);
        qWarning("%-42s %c %s", qPrintable(actual.value(i)), same ? '|' : '#', qPrintable(expected.value(i)));
    }
    return false;
}

}  // namespace test
