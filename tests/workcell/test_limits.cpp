#include "json/jsontext.h"
#include "support/suite.h"
#include "support/text.h"
#include "workcell/limits.h"

/// A run judged by the limits of a file.
class WorkcellLimits : public QObject {
    Q_OBJECT

    static QString faultOf(const QByteArray& text) {
        mendo::FileProblem problem;
        const auto json = mendo::JsonText::parse(test::quoted(text), &problem);
        if (workcell::Limits::from(*json, &problem)) {
            return "none";
        }
        return QString("%1:%2 %3").arg(problem.place.line).arg(problem.place.column).arg(problem.text());
    }

private slots:
    void file_isRefusedWithThePlace() {
        const QPair<QByteArray, QString> rows[] = {
            {"{}", "none"},
            {"[]", "1:1 this is no record"},
            {"{'seam':\n {'welded':{}}}", "2:12 'welded' is not known here"},
            {"{'seams':{'A.B':{'welded_mm':{'max':'9'}}}}", "1:37 'max' is no number"},
            {"{'cycle_s':{'min':2,'max':1}}", "1:12 'min' of 'cycle_s' is greater than 'max'"},
        };
        for (const auto& row : rows) {
            QCOMPARE(faultOf(row.first), row.second);
        }
    }

    void run_isJudgedSeamBySeam() {
        mendo::FileProblem problem;
        const auto json = mendo::JsonText::parse(
            test::quoted("{'cycle_s':{'max':20},'seam':{'welded_ratio':{'min':0.99,'max':1.02},"
                         "'mean_speed_mm_s':{'max':9}},'seams':{'B':{'mean_speed_mm_s':{'min':1}}}}"),
            &problem);
        workcell::RunRecord run;
        run.seconds = 20;
        run.seams.resize(3);
        const double welded[] = {100, 302, 0};
        for (size_t i = 0; i < run.seams.size(); ++i) {
            run.seams[i].programmedMm = 100;
            run.seams[i].weldedMm = welded[i];
            run.seams[i].set = i == 2 ? "B" : "A";
        }
        run.seams[0].meanSpeedMmPerS = run.seams[1].meanSpeedMmPerS = 9;
        QStringList found;
        const auto limits = workcell::Limits::from(*json, &problem);
        for (const auto& violation : workcell::violations(run, *limits)) {
            found << QString("%1 %2").arg(*violation.seam).arg(violation.limit);
        }
        QCOMPARE(found, (QStringList{"2 welded_ratio", "3 welded_ratio", "3 mean_speed_mm_s"}));
        QCOMPARE(limits->json(), json->value().toObject());
    }
};

LUMO_TEST(WorkcellLimits)
#include "test_limits.moc"
