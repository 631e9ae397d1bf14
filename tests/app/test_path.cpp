#include "app/path/pathframe.h"
#include "app/path/pathlayout.h"
#include "app/pendant/placement.h"
#include "app/views/viewswindow.h"
#include "support/suite.h"
#include "support/text.h"

using app::Place;

namespace {

/// "X Y" in millimetres; all there is lies 300 mm high.
QString text(const Place& place) {
    return QString("%1 %2").arg(qRound64(place.x * 1000)).arg(qRound64(place.y * 1000));
}

/// "LINE SHAPE from > to length ~ where the corner ends", with w for a weld and ! for what cannot be moved.
QString text(const app::PathMove& move) {
    static const char* const shapes[] = {"joint", "line", "arc", "circle"};
    const QString way = text(move.way.front()) + " > " + text(move.way.back());
    const QString length = QString::number(app::lengthOf(move.way) * 1000, 'f', 1);
    return QString("%1 %2 %3 %4").arg(move.line).arg(shapes[int(move.shape)], way, length) +
           (move.corner.empty() ? "" : " ~ " + text(move.corner.back())) + (move.weld ? " w" : "") +
           (move.impossible ? " !" : "");
}

/// "TYPE X Y [X1 Y1] ['field':value]…" as a statement.
QByteArray statement(const QString& text) {
    const QStringList words = text.split(' ');
    QString json = "{'type':'" + words[0] + "'";
    for (int i = 1; i < words.size(); ++i) {
        if (words[i].startsWith('\''))
            json += "," + words[i];
        else if (i % 2 == 1)
            json += QString(",'%1':{'trans':[%2e-3,%3e-3,0.3]}").arg(i == 1 ? "point" : "point1", words[i], words[i + 1]);
    }
    return json.toUtf8() + "}";
}

}  // namespace

/// The path of a program, the sheet that it is drawn on, and where windows go.
class AppPath : public QObject {
    Q_OBJECT

    const sim::Arm arm_{6};

    std::vector<app::PathMove> layOut(const QString& statements) const {
        QByteArrayList list;
        for (const QString& line : statements.split("; "))
            list << statement(line);
        const auto program = test::json("[" + list.join(',') + "]").toArray();
        return app::layOutPath(program, arm_, {{0.5, 0, 0.3}, arm_.home()});
    }

private slots:
    void program_isLaidOutAsItIsRun() {
        const QVector<QStringList> rows = {
            {"moveL 500 0; open 'execute':false; moveL 9 0 'execute':false; open; moveL 600 0; close; moveL 600 90",
             "0 line 500 0 > 500 0 0.0", "4 line 500 0 > 600 0 100.0 w", "6 line 600 0 > 600 90 90.0"},
            {"moveL 500 0; moveL 600 0 'zone':'20'; moveL 600 100 'zone':20",  // none behind the last one
             "0 line 500 0 > 500 0 0.0", "1 line 500 0 > 580 0 80.0 ~ 600 20", "2 line 600 20 > 600 100 80.0"},
            {"moveL 500 0; moveL 600 0 'zone':20; moveL 9 0 'execute':false; moveL 600 100",
             "0 line 500 0 > 500 0 0.0", "1 line 500 0 > 600 0 100.0", "3 line 600 0 > 600 100 100.0"},
            {"moveL 500 0; moveL 600 0 'zone':90; moveL 600 60",  // half of the shorter way
             "0 line 500 0 > 500 0 0.0", "1 line 500 0 > 570 0 70.0 ~ 600 30", "2 line 600 30 > 600 60 30.0"},
            {"moveC 600 100 700 0; moveC 500 0 600 -100", "0 arc 500 0 > 700 0 314.1",
             "1 arc 700 0 > 600 -100 471.2"},  // the long way round
            {"moveCC 600 100 700 0; moveL 500 50", "0 circle 500 0 > 500 0 628.3", "1 line 500 0 > 500 50 50.0"},
            {"moveCC 600 0.5 700 0", "0 circle 500 0 > 700 0 200.0 !"},
            {"moveL 500 0; moveJ 600 0", "0 line 500 0 > 500 0 0.0", "1 joint 500 0 > 600 0 100.0 !"},
        };
        for (const QStringList& row : rows) {
            QStringList path = {row[0]};
            for (const app::PathMove& move : layOut(row[0]))
                path << text(move);
            QCOMPARE(path.join('\n'), row.join('\n'));
        }
        // A corner is a parabola: its middle is a quarter of either end and half of the taught target.
        const auto corner = layOut("moveL 500 0; moveL 600 0 'zone':20; moveL 600 100")[1].corner;
        QVERIFY(app::norm(corner[corner.size() / 2] - Place{0.595, 0.005, 0.3}) < 1e-9);
    }

    /// About the base's axis the tool goes round, not straight.
    void jointMove_goesWhereTheJointsLead() {
        const QString near = "moveJ 'point':{'trans':[0,0,0],'near':[%1,0.1,0.8,0,0.7,0]}";
        const auto at = [this](double turn) {
            const auto trans = arm_.forward({turn, 0.1, 0.8, 0, 0.7, 0}).trans;
            return Place{trans[0], trans[1], trans[2]};
        };
        const auto move = layOut(near.arg(0) + "; " + near.arg(0.8))[1];
        QVERIFY(app::norm(move.way.front() - at(0)) < 1e-9 && app::norm(move.target - at(0.8)) < 1e-9);
        QVERIFY(app::norm(app::along(move.way, app::lengthOf(move.way) / 2) - at(0.4)) < 1e-4);
    }

    /// To one scale in both views; what lies higher or farther to the left of x is drawn higher.
    void sheet_showsEverythingAndZoomsUnderTheFinger() {
        const Place least{0.3, -0.2, 0.1};
        for (const Place& room : {Place{2, 0.1, 0.1}, {0.1, 1, 0.02}, {0.1, 0.02, 1}, {0, 0, 0}}) {
            app::PathFrame frame;
            frame.setSize({640, 480});
            app::Extent extent;
            extent.add(least + room);
            extent.add(least);
            frame.fit(extent);
            for (const Place& place : {least, least + room}) {
                QVERIFY(frame.above().contains(frame.fromAbove(place)));
                QVERIFY(frame.side().contains(frame.fromSide(place)));
            }
            const double scale = frame.pixelsPerMetre();
            const QPointF step(0.01 * scale, -0.01 * scale);
            const Place next = least + Place{0.01, 0.01, 0.01};
            QVERIFY((frame.fromAbove(next) - frame.fromAbove(least) - step).manhattanLength() < 1e-6);
            QVERIFY((frame.fromSide(next) - frame.fromSide(least) - step).manhattanLength() < 1e-6);
            QCOMPARE(frame.fromAbove(least).x(), frame.fromSide(least).x());
            const app::ScaleBar bar = frame.scaleBar(140);
            QVERIFY(bar.pixels <= 140 && bar.pixels > 140 / 2.5);
            QCOMPARE(bar.pixels, bar.metres * scale);
            const Place held = least + room * 0.5 + Place{0.002, 0.002, 0.002};
            for (const bool fromSide : {false, true}) {
                const auto seen = [&] { return fromSide ? frame.fromSide(held) : frame.fromAbove(held); };
                const QPointF finger = seen();
                frame.zoom(2, finger);
                QVERIFY((seen() - finger).manhattanLength() < 1e-6);
                frame.pan({12, -7}, finger);
                QVERIFY((seen() - finger - QPointF(12, -7)).manhattanLength() < 1e-6);
            }
            QCOMPARE(frame.pixelsPerMetre(), 4 * scale);
            frame.zoom(1e9, {});
            QCOMPARE(frame.pixelsPerMetre(), double(app::PathFrame::kMostScale));
        }
    }

    void window_coversNoOther() {
        const QRect wide(0, 0, 1920, 1080), small(0, 0, 1280, 800), none;
        const QVector<QVector<QRect>> views = {
            // panel, screen, what to keep free, where the views go
            {small.translated(1920, 0), wide.translated(1920, 0), none, {3200, 0, 640, 800}},
            {{640, 100, 1280, 800}, wide, none, {0, 100, 640, 800}},
            {small, small, none, {0, 50, 640, 710}},
            {small, wide, {1620, 580, 300, 500}, {1280, 0, 640, 580}},
            {small, wide, {1640, 280, 280, 800}, {1000, 50, 640, 710}},
        };
        for (const auto& row : views)
            QCOMPARE(app::placeBeside(row[0], row[1], 640, {0, 50, 280, 40}, row[2]), row[3]);
        QCOMPARE(app::cornerBeside({0, 0, 1280, 830}, {300, 700}, wide), QPoint(1620, 380));
        QCOMPARE(app::cornerBeside({640, 0, 1280, 830}, {300, 700}, wide), QPoint(0, 380));
        QVERIFY(!app::cornerBeside({0, 0, 1280, 600}, {300, 700}, {0, 0, 1920, 600}));
        QCOMPARE(app::placeClearOf({900, 300, 300, 200}, {1000, 100, 280, 700}, small), QPoint(700, 300));
        QCOMPARE(app::placeClearOf({100, 300, 300, 200}, {0, 100, 280, 700}, small), QPoint(280, 300));
        QCOMPARE(app::placeClearOf({900, 500, 300, 150}, {900, 600, 380, 200}, small), QPoint(900, 450));
        QVERIFY(!app::placeClearOf({0, 0, 1280, 700}, {600, 100, 280, 600}, small));
    }
};

LUMO_TEST(AppPath)
#include "test_path.moc"
