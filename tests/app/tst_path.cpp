#include "app/path/pathframe.h"
#include "app/path/pathlayout.h"
#include "app/views/viewswindow.h"

#include <QJsonDocument>
#include <QtTest>

using app::Place;

/// The path of a program and its views, without a window.
class AppPath : public QObject {
    Q_OBJECT
private slots:
    void statements_areLaidOut_data();
    void statements_areLaidOut();
    void corner_isAParabola();
    void jointMove_goesWhereTheJointsLead();
    void arc_isRound_data();
    void arc_isRound();
    void whole_isFittedToOneScale_data();
    void whole_isFittedToOneScale();
    void zoom_keepsWhatIsUnderTheFinger_data();
    void zoom_keepsWhatIsUnderTheFinger();
    void scaleBar_isARoundLength_data();
    void scaleBar_isARoundLength();
    void views_standBesideThePanel_data();
    void views_standBesideThePanel();

private:
    const sim::Arm arm_{6};
    std::vector<app::PathMove> layOut(const QByteArray& json) const;
};

namespace {

/// "X Y Z" in millimetres.
QString text(const Place& place) {
    const auto mm = [](double metres) { return QString::number(qRound64(metres * 1000)); };
    return mm(place.x) + QLatin1Char(' ') + mm(place.y) + QLatin1Char(' ') + mm(place.z);
}

/// "LINE SHAPE from X Y Z to X Y Z, length, rounding": w for a weld, ! for what cannot be moved.
QString text(const app::PathMove& move) {
    static const char* const shapes[] = {"joint", "line", "arc", "circle"};
    QString text =
        QStringLiteral("%1 %2 %3 > %4 %5")
            .arg(QString::number(move.line), QLatin1String(shapes[int(move.shape)]), ::text(move.way.front()),
                 ::text(move.way.back()), QString::number(app::lengthOf(move.way) * 1000, 'f', 1));
    if (!move.corner.empty())
        text += QStringLiteral(" ~ ") + ::text(move.corner.back());
    return text + (move.weld ? QStringLiteral(" w") : QString()) +
           (move.impossible ? QStringLiteral(" !") : QString());
}

QByteArray line(double x, double y, double zone = 0, const char* more = "") {
    return QStringLiteral(R"({"type":"moveL","execute":true,"zone":%3,"point":{"trans":[%1,%2,0.3]}%4})")
        .arg(QString::number(x), QString::number(y), QString::number(zone), QLatin1String(more))
        .toUtf8();
}

QByteArray bend(const char* type, double x, double y, double x1, double y1) {
    return QStringLiteral(R"({"type":"%1","execute":true,"zone":0,"point":{"trans":[%2,%3,0.3]},)")
               .arg(QLatin1String(type), QString::number(x), QString::number(y))
               .toUtf8() +
           QStringLiteral(R"("point1":{"trans":[%1,%2,0.3]}})")
               .arg(QString::number(x1), QString::number(y1))
               .toUtf8();
}

QByteArray plain(const char* type, bool execute = true) {
    return QStringLiteral(R"({"type":"%1","execute":%2})")
        .arg(QLatin1String(type), execute ? QStringLiteral("true") : QStringLiteral("false"))
        .toUtf8();
}

bool nearly(const Place& a, const Place& b, double tolerance = 1e-9) {
    return app::norm(a - b) < tolerance;
}

}  // namespace

std::vector<app::PathMove> AppPath::layOut(const QByteArray& json) const {
    return app::layOutPath(QJsonDocument::fromJson('[' + json + ']').array(), arm_,
                           {{0.5, 0, 0.3}, arm_.home()});
}

void AppPath::statements_areLaidOut_data() {
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<QStringList>("path");
    const QByteArray comma(",");
    QTest::newRow("nothing") << QByteArray() << QStringList();
    QTest::newRow("the first target is where the path begins")
        << line(0.5, 0.1) + comma + line(0.6, 0.1)
        << QStringList{"0 line 500 100 300 > 500 100 300 0.0", "1 line 500 100 300 > 600 100 300 100.0"};
    QTest::newRow("weld from open to close")
        << line(0.5, 0) + comma + plain("open") + comma + line(0.6, 0) + comma + plain("close") + comma +
               line(0.6, 0.1)
        << QStringList{"0 line 500 0 300 > 500 0 300 0.0", "2 line 500 0 300 > 600 0 300 100.0 w",
                       "4 line 600 0 300 > 600 100 300 100.0"};
    QTest::newRow("what is not executed neither welds nor moves")
        << line(0.5, 0) + comma + plain("open", false) + comma + line(0.9, 0).replace("true", "false") +
               comma + line(0.6, 0)
        << QStringList{"0 line 500 0 300 > 500 0 300 0.0", "3 line 500 0 300 > 600 0 300 100.0"};
    QTest::newRow("zone rounds off") << line(0.5, 0) + comma + line(0.6, 0, 20) + comma + line(0.6, 0.1, 20)
                                     << QStringList{"0 line 500 0 300 > 500 0 300 0.0",
                                                    "1 line 500 0 300 > 580 0 300 80.0 ~ 600 20 300",
                                                    "2 line 600 20 300 > 600 100 300 80.0"};
    QTest::newRow("zone takes half of the shorter way at most")
        << line(0.5, 0) + comma + line(0.6, 0, 90) + comma + line(0.6, 0.06)
        << QStringList{"0 line 500 0 300 > 500 0 300 0.0", "1 line 500 0 300 > 570 0 300 70.0 ~ 600 30 300",
                       "2 line 600 30 300 > 600 60 300 30.0"};
    QTest::newRow("another statement ends the rounding")
        << line(0.5, 0) + comma + line(0.6, 0, 20) + comma + plain("delay") + comma + line(0.6, 0.1)
        << QStringList{"0 line 500 0 300 > 500 0 300 0.0", "1 line 500 0 300 > 600 0 300 100.0",
                       "3 line 600 0 300 > 600 100 300 100.0"};
    QTest::newRow("a skipped move ends it too")
        << line(0.5, 0) + comma + line(0.6, 0, 20) + comma + line(0.9, 0).replace("true", "false") + comma +
               line(0.6, 0.1)
        << QStringList{"0 line 500 0 300 > 500 0 300 0.0", "1 line 500 0 300 > 600 0 300 100.0",
                       "3 line 600 0 300 > 600 100 300 100.0"};
    QTest::newRow("half a circle") << bend("moveC", 0.6, 0.1, 0.7, 0)
                                   << QStringList{"0 arc 500 0 300 > 700 0 300 314.1"};
    QTest::newRow("a circle ends where it began")
        << bend("moveCC", 0.6, 0.1, 0.7, 0) + comma + line(0.5, 0.1)
        << QStringList{"0 circle 500 0 300 > 500 0 300 628.3", "1 line 500 0 300 > 500 100 300 100.0"};
    QTest::newRow("no circle") << bend("moveCC", 0.6, 0, 0.7, 0)
                               << QStringList{"0 circle 500 0 300 > 700 0 300 200.0 !"};
    QTest::newRow("no circle, nearly")
        << bend("moveCC", 0.6, 0.0005, 0.7, 0) << QStringList{"0 circle 500 0 300 > 700 0 300 200.0 !"};
    QTest::newRow("what does not say whether it is executed is")
        << line(0.5, 0).replace(R"("execute":true,)", "") + comma +
               plain("open").replace(R"(,"execute":true)", "") + comma + line(0.6, 0)
        << QStringList{"0 line 500 0 300 > 500 0 300 0.0", "2 line 500 0 300 > 600 0 300 100.0 w"};
    QTest::newRow("numbers as text") << line(0.5, 0) + comma +
                                            line(0.6, 0, 20).replace("\"zone\":20", "\"zone\":\"20\"") +
                                            comma + line(0.6, 0.1)
                                     << QStringList{"0 line 500 0 300 > 500 0 300 0.0",
                                                    "1 line 500 0 300 > 580 0 300 80.0 ~ 600 20 300",
                                                    "2 line 600 20 300 > 600 100 300 80.0"};
    QTest::newRow("joints of another arm")
        << line(0.5, 0) + comma + line(0.6, 0, 0, R"(,"note":"")").replace("moveL", "moveJ")
        << QStringList{"0 line 500 0 300 > 500 0 300 0.0", "1 joint 500 0 300 > 600 0 300 100.0 !"};
}

void AppPath::statements_areLaidOut() {
    QFETCH(QByteArray, program);
    QStringList path;
    for (const app::PathMove& move : layOut(program))
        path << text(move);
    QTEST(path, "path");
}

void AppPath::corner_isAParabola() {
    const auto moves = layOut(line(0.5, 0) + ',' + line(0.6, 0, 20) + ',' + line(0.6, 0.1));
    const app::Polyline& corner = moves[1].corner;
    // A quarter of its ends and half of the taught target.
    QVERIFY(nearly(corner[corner.size() / 2], {0.595, 0.005, 0.3}));
    QVERIFY(nearly(corner.front(), moves[1].way.back()));
    QVERIFY(nearly(corner.back(), moves[2].way.front()));
}

void AppPath::jointMove_goesWhereTheJointsLead() {
    sim::Joints far = arm_.home(), middle = arm_.home();
    far[0] += 0.8;
    middle[0] += 0.4;
    QByteArray program;
    for (const sim::Joints& joints : {arm_.home(), far}) {
        QStringList near;
        for (const double angle : joints)
            near << QString::number(angle, 'g', 17);
        program += QByteArray(program.isEmpty() ? "" : ",") +
                   R"({"type":"moveJ","execute":true,"zone":0,"point":{"trans":[0,0,0],"near":[)" +
                   near.join(QLatin1Char(',')).toUtf8() + "]}}";
    }
    const auto moves = layOut(program);
    const auto end = arm_.forward(far).trans, on = arm_.forward(middle).trans;
    QVERIFY(nearly(moves[1].target, {end[0], end[1], end[2]}));
    QVERIFY(nearly(moves[1].way.front(), {0.5, 0, 0.4}));
    // About the base's axis the tool goes round, not straight.
    const double half = app::lengthOf(moves[1].way) / 2;
    QVERIFY(nearly(app::along(moves[1].way, half), {on[0], on[1], on[2]}, 1e-4));
}

void AppPath::arc_isRound_data() {
    QTest::addColumn<QVector<double>>("places");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("turn");
    QTest::newRow("lying") << QVector<double>{0.1, 0, 0, 0, 0.1, 0, -0.1, 0, 0} << 0.1 << 180.0;
    QTest::newRow("the long way round") << QVector<double>{0.1, 0, 0, -0.1, 0, 0, 0, -0.1, 0} << 0.1 << 270.0;
    QTest::newRow("upright, small, far off")
        << QVector<double>{0.9, 0.4, 0.302, 0.902, 0.4, 0.3, 0.9, 0.4, 0.298} << 0.002 << 180.0;
}

void AppPath::arc_isRound() {
    QFETCH(QVector<double>, places);
    QFETCH(double, radius);
    QFETCH(double, turn);
    const Place start{places[0], places[1], places[2]}, aux{places[3], places[4], places[5]};
    const Place end{places[6], places[7], places[8]};
    const auto arc = app::arcThrough(start, aux, end);
    QVERIFY(arc);
    QVERIFY(nearly(arc->front(), start) && nearly(arc->back(), end));
    const double length = radius * qDegreesToRadians(turn);
    QVERIFY2(std::abs(app::lengthOf(*arc) / length - 1) < 1e-3, qPrintable(QString::number(length)));
    double nearest = 1;
    for (size_t i = 1; i < arc->size(); ++i) {
        const Place middle = app::between((*arc)[i - 1], (*arc)[i], 0.5);
        nearest = std::min(nearest, app::norm(middle - aux));
    }
    QVERIFY2(nearest < radius * 0.03, qPrintable(QString::number(nearest)));
}

void AppPath::whole_isFittedToOneScale_data() {
    QTest::addColumn<QVector<double>>("most");
    QTest::newRow("wide") << QVector<double>{2.0, 0.1, 0.1};
    QTest::newRow("deep") << QVector<double>{0.1, 1.0, 0.02};
    QTest::newRow("high") << QVector<double>{0.1, 0.02, 1.0};
    QTest::newRow("a place") << QVector<double>{0, 0, 0};
}

void AppPath::whole_isFittedToOneScale() {
    QFETCH(QVector<double>, most);
    app::PathFrame frame;
    frame.setSize({640, 480});
    app::Extent extent;
    const Place least{0.3, -0.2, 0.1};
    const Place far = least + Place{most[0], most[1], most[2]};
    extent.add(far);
    extent.add(least);
    frame.fit(extent);
    for (const Place& place : {least, far}) {
        QVERIFY(frame.above().contains(frame.fromAbove(place)));
        QVERIFY(frame.side().contains(frame.fromSide(place)));
        QCOMPARE(frame.fromAbove(place).x(), frame.fromSide(place).x());
    }
    // What lies higher or farther to the left of x is drawn higher, everywhere to the same scale.
    const QPointF above = frame.fromAbove(least + Place{0.01, 0.01, 0}) - frame.fromAbove(least);
    const QPointF side = frame.fromSide(least + Place{0.01, 0, 0.01}) - frame.fromSide(least);
    const double step = 0.01 * frame.pixelsPerMetre();
    QVERIFY(std::abs(above.x() - step) < 1e-6 && std::abs(above.y() + step) < 1e-6);
    QVERIFY(std::abs(side.x() - step) < 1e-6 && std::abs(side.y() + step) < 1e-6);
}

void AppPath::zoom_keepsWhatIsUnderTheFinger_data() {
    QTest::addColumn<QPointF>("finger");
    QTest::newRow("above") << QPointF(100, 40);
    QTest::newRow("side") << QPointF(500, 430);
}

void AppPath::zoom_keepsWhatIsUnderTheFinger() {
    QFETCH(QPointF, finger);
    app::PathFrame frame;
    frame.setSize({640, 480});
    app::Extent extent;
    extent.add({0.4, 0, 0.3});
    extent.add({0.6, 0.1, 0.4});
    frame.fit(extent);
    const bool side = frame.side().contains(finger);
    const auto seen = [&](const Place& place) {
        return side ? frame.fromSide(place) : frame.fromAbove(place);
    };
    const Place start = side ? Place{0.5, 0.05, 0.4} : Place{0.5, 0.05, 0.35};
    // The place under the finger, by its distance from another one.
    const QPointF off = (finger - seen(start)) / frame.pixelsPerMetre();
    const Place held = start + (side ? Place{off.x(), 0, -off.y()} : Place{off.x(), -off.y(), 0});
    const double before = frame.pixelsPerMetre();
    frame.zoom(3, finger);
    QVERIFY(std::abs(frame.pixelsPerMetre() / before - 3) < 1e-9);
    QVERIFY((seen(held) - finger).manhattanLength() < 1e-6);
    frame.pan({12, -7}, finger);
    QVERIFY((seen(held) - finger - QPointF(12, -7)).manhattanLength() < 1e-6);
    frame.zoom(1e9, finger);
    QVERIFY(frame.pixelsPerMetre() <= app::PathFrame::kMostScale);
}

void AppPath::scaleBar_isARoundLength_data() {
    QTest::addColumn<double>("extent");
    QTest::addColumn<double>("metres");
    QTest::newRow("2 m") << 2.0 << 0.2;
    QTest::newRow("20 cm") << 0.2 << 0.02;
    QTest::newRow("4 cm") << 0.04 << 0.01;
}

void AppPath::scaleBar_isARoundLength() {
    QFETCH(double, extent);
    app::PathFrame frame;
    frame.setSize({640, 480});
    app::Extent room;
    room.add({0, 0, 0});
    room.add({extent, 0.01, 0.01});
    frame.fit(room);
    const app::ScaleBar bar = frame.scaleBar(140);
    QTEST(bar.metres, "metres");
    QVERIFY(bar.pixels <= 140 && bar.pixels > 140 / 2.5);
    QCOMPARE(bar.pixels, (frame.fromAbove({bar.metres, 0, 0}) - frame.fromAbove({})).x());
}

void AppPath::views_standBesideThePanel_data() {
    QTest::addColumn<QRect>("panel");
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QRect>("keepFree");
    QTest::addColumn<QRect>("place");
    const QRect wide(0, 0, 1920, 1080), small(0, 0, 1280, 800);
    const QRect none, left(0, 0, 1280, 800);
    QTest::newRow("room on the right") << left << wide << none << QRect(1280, 0, 640, 800);
    QTest::newRow("room on the left")
        << QRect(640, 100, 1280, 800) << wide << none << QRect(0, 100, 640, 800);
    QTest::newRow("in the middle") << QRect(320, 100, 1280, 800) << wide << none << QRect(0, 150, 640, 710);
    QTest::newRow("no room") << left << small << none << QRect(0, 50, 640, 710);
    QTest::newRow("second screen") << left.translated(1920, 0) << wide.translated(1920, 0) << none
                                   << QRect(3200, 0, 640, 800);
    QTest::newRow("above the pendant")
        << left << wide << QRect(1620, 580, 300, 500) << QRect(1280, 0, 640, 580);
    QTest::newRow("over the strip, beside a high pendant")
        << left << wide << QRect(1640, 280, 280, 800) << QRect(1000, 50, 640, 710);
    QTest::newRow("no room beside a broad pendant")
        << left << wide << QRect(1500, 280, 420, 800) << QRect(1280, 0, 640, 800);
}

void AppPath::views_standBesideThePanel() {
    QFETCH(QRect, panel);
    QFETCH(QRect, screen);
    QFETCH(QRect, keepFree);
    QTEST(app::placeBeside(panel, screen, 640, {0, 50, 280, 40}, keepFree), "place");
}

QTEST_GUILESS_MAIN(AppPath)
#include "tst_path.moc"
