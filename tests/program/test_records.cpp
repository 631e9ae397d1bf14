#include "json/jsontext.h"
#include "program/parameters.h"
#include "program/statement.h"
#include "support/suite.h"
#include "support/text.h"

using namespace prog;
using test::json;

namespace {

QString shown(const TaughtPoint& point) {
    QStringList numbers{point.taught ? "taught" : point.exists ? "empty" : "none"};
    for (const double number : {point.trans[0], point.trans[2], point.rot[1]}) {
        numbers << QString::number(number);
    }
    for (const double angle : point.joints) {
        numbers << QString::number(angle);
    }
    return numbers.join(',');
}

/// What a move or another statement uses.
QString shown(const Statement& statement) {
    const QString line = statement.executed ? "" : "skipped ";
    if (statement.moves) {
        return line + QString("v%1 z%2 %3 %4 %5 %6")
                          .arg(statement.speedMmPerS)
                          .arg(statement.zoneMm.value_or(-1))
                          .arg(shown(statement.point), shown(statement.point1), statement.tool,
                               statement.workObject);
    }
    return line + QString("%1 w%2 %3ms %4=%5 note=%6")
                      .arg(statement.set)
                      .arg(statement.weldSpeedMmPerS)
                      .arg(statement.delayMs)
                      .arg(statement.signal.text())
                      .arg(statement.value)
                      .arg(statement.note);
}

QJsonObject with(QJsonObject map, const QString& path, const QJsonValue& value) {
    const QString name = path.section('.', 0, 0);
    const QString rest = path.section('.', 1);
    map[name] = rest.isEmpty() ? value : with(map[name].toObject(), rest, value);
    return map;
}

/// A new record, as the rows say.
QJsonObject newRecord(const FieldRows& rows) {
    QJsonObject record;
    for (const FieldRow& row : rows) {
        if (row.standard) {
            record = with(record, row.path, json(QByteArray("[") + row.standard + "]").toArray().first());
        }
    }
    return record;
}

}  // namespace

/// One meaning of a record: how it is read, what a new one holds.
class ProgramRecords : public QObject {
    Q_OBJECT
private slots:
    void statement_isReadAlikeFromTreeAndFile() {
        const std::pair<QByteArray, QString> cases[] = {
            {"'type':'moveL','execute':false,'speed':'35.5','point':{'trans':[1,2,'3'],'rot':[0,4,0]},"
             "'toolset':{'end':{'name':'T'},'ref':{'name':'W'}}",
             "skipped v35.5 z-1 taught,1,3,4 none,0,0,0 T W"},
            {"'type':'moveC','zone':null,'point':{},'point1':{'trans':[1,2],'near':[0.5,'1',null]}",
             "v0 z0 empty,0,0,0 empty,1,0,0,0.5,1,0  "},
            {"'type':'moveX','speed':'1e400','execute':'no','point':5", "v0 z-1 empty,0,0,0 none,0,0,0  "},
            {"'type':'open','execute':0,'index':'1','weldspeed':'20.5','note':{'index':5,'execute':true}",
             "skipped 1 w20.5 0ms =0 note="},
            {"'type':'param','index':1.9,'note':7", "1 w0 0ms =0 note=7"},
            {"'type':'delay','delaytime':'60.9'", "0 w0 60ms =0 note="},
            {"'type':'delay','delaytime':-5", "0 w0 0ms =0 note="},
            {"'type':'delay','delaytime':1e10", "0 w0 0ms =0 note="},
            // The two kinds of outputs and an input each have a rule of their own for the text of the state.
            {"'type':'setDO','DO_type':'IO','doName':'DO1','value':''", "0 w0 0ms DO1=1 note="},
            {"'type':'setDO','DO_reg':{'name':'R','bias':'4'},'value':''", "0 w0 0ms R[5]=0 note="},
            {"'type':'setDO','DO_reg':{'name':'R'},'value':true", "0 w0 0ms R[1]=1 note="},
            {"'type':'waitDI','DI_type':'IO','diName':'DI1'", "0 w0 0ms DI1=1 note="},
            {"'type':'waitDI','DI_reg':{'name':'R','bias':2},'value1':'false'", "0 w0 0ms R[3]=0 note="},
        };
        for (const auto& [content, expected] : cases) {
            const QByteArray record = "{" + content + "}";
            QCOMPARE(shown(Statement::from(json(record))), expected);
            const auto node = test::node(record);
            QCOMPARE(shown(Statement::from(node.get())), expected);
            node->cmobjs(true);  // makes objects of the records
            QCOMPARE(shown(Statement::from(node.get())), expected);
        }
        QCOMPARE(shown(Statement::from(mendo::ModuleObject::null())), "0 w0 0ms =0 note=");
    }

    void oddParameterValues_readAsZero() {
        const LaserParams params = LaserParams::from(
            json("{'power':'60','increase_time':-5,'stay_time':'x','delay_after_blow':2000000000,"
                 "'note':{'speed':60,'open_time':50}}"));
        QCOMPARE(params.power, 0.6);
        QCOMPARE(params.wireSpeed, 0.0);
        QCOMPARE(params.increaseMs + params.stayMs + params.openMs, 0);
        QCOMPARE(params.postFlowMs, 500'000'000);
    }

    /// The package makes new records from these documents.
    void defaultDocuments_holdWhatTheRowsSay() {
        QJsonObject templates;
        QJsonArray definitions;
        for (const StatementRow& row : statementRows()) {
            templates[row.word] = newRecord(row.fields);
        }
        for (const ParameterRow& row : parameterRows()) {
            definitions << QJsonObject{
                {"name", row.name}, {"value", row.standard}, {"range", QJsonArray{0, row.most()}}};
        }
        for (const char* name : {"lumo", "lumo_en", "lumo_ru"}) {
            const QString file = SOURCE_FOLDER "lumo/resources/" + QString(name) + ".json";
            mendo::FileProblem problem;
            const auto text = mendo::JsonText::parse(test::contentOf(file), &problem);
            const QJsonObject document = text->value().toObject();
            QCOMPARE(test::text(document["toolset"]), test::text(newRecord(toolsetFields())));
            QJsonObject defaults = document["default"].toObject();
            if (name == QByteArray("lumo_ru")) {  // whose records begin with fewer fields
                templates["open"] = QJsonObject();
                templates["waitDI"] = json("{'diName':'','value1':''}");
            }
            QCOMPARE(test::text(defaults["program"]), test::text(templates));
            QJsonArray params;
            for (const QJsonValue param : defaults["param"].toArray()) {
                QJsonObject definition = param.toObject();
                definition.remove("tag");
                params << definition;
            }
            QCOMPARE(test::text(params), test::text(definitions));
        }
    }
};

LUMO_TEST(ProgramRecords)
#include "test_records.moc"
