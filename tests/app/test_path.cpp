#include "app/path/pathlayout.h"
#include "app/path/pathpick.h"
#include "app/results/seamprofile.h"
#include "look/seam.h"
#include "support/suite.h"
#include "support/text.h"

#include <QImage>
#include <QPainter>

using app::Camera;
using app::Extent;
using app::PathMove;
using app::Position;

namespace {

constexpr QRectF screen(0, 0, 400, 300);

Extent boxOf(const Position& least, const Position& most) {
    Extent extent;
    extent.add(least);
    extent.add(most);
    return extent;
}

PathMove straight(int line, const Position& from, const Position& to, int seam = -1) {
    PathMove move;
    move.line = line;
    move.weld = seam >= 0;
    move.seam = seam;
    move.path = {from, to};
    move.target = to;
    return move;
}

QString text(const QPointF& point) {
    return QString("%1 %2").arg(qRound(point.x())).arg(qRound(point.y()));
}

}  // namespace

/// How the path is seen, and what a tap on it means.
class AppPath : public QObject {
    Q_OBJECT

    static Camera cameraAt(double turn, double height) {
        Camera camera;
        camera.setArea(screen);
        camera.look(turn, height);
        camera.fit(boxOf({0, 0, 0}, {0.2, 0.1, 0.1}), 0);
        return camera;
    }

private slots:
    void camera_seesEachSideTheRightWayUp() {
        const struct {
            double turn, height;
            const char *x, *y, *z;  // where 100 mm along an axis leads from the middle
        } rows[] = {
            {0, Camera::fromAbove, "200 0", "0 -200", "0 0"},
            {0, 0, "200 0", "0 0", "0 -200"},
            {Camera::fromAbove, Camera::fromAbove, "0 200", "200 0", "0 0"},
        };
        for (const auto& row : rows) {
            Camera camera = cameraAt(row.turn, row.height);
            camera.zoom(2000 / camera.pixelsPerMetre(), screen.center());
            QCOMPARE(text(camera.direction({1, 0, 0}) * 200), row.x);
            QCOMPARE(text(camera.direction({0, 1, 0}) * 200), row.y);
            QCOMPARE(text(camera.direction({0, 0, 1}) * 200), row.z);
        }
        // From the front above, what is nearer to the eye covers what lies behind.
        const Camera space = cameraAt(0, 0.5);
        QVERIFY(space.nearness({0, -1, 0}) > space.nearness({0, 1, 0}));
        QVERIFY(space.nearness({0, 0, 1}) > space.nearness({0, 0, 0}));
    }

    void camera_showsAllAndTurnsTheLongSideAlongTheView() {
        const Extent tall = boxOf({0.4, -0.2, 0}, {0.5, 0.2, 0.05});
        Camera camera = cameraAt(0, Camera::fromAbove);
        camera.fitTurned(tall, 20);
        QCOMPARE(camera.turn(), Camera::fromAbove);
        QCOMPARE(camera.pixelsPerMetre(), 360 / 0.4);
        QVERIFY(screen.contains(camera.seen(tall.least)) && screen.contains(camera.seen(tall.most)));
        camera.fitTurned(boxOf({0, 0, 0}, {0.4, 0.1, 0}), 20);
        QCOMPARE(camera.turn(), 0.0);
        camera.fit(boxOf({1, 1, 1}, {1, 1, 1}), 20);
        QVERIFY(camera.pixelsPerMetre() <= Camera::mostScale && camera.seen({1, 1, 1}) == screen.center());
    }

    void camera_keepsWhatTheFingersHold() {
        Camera camera = cameraAt(0.7, 0.6);
        const Position held{0.05, 0.02, 0.1};
        const QPointF place = camera.seen(held);
        camera.zoom(1.7, place);
        QCOMPARE(text(camera.seen(held)), text(place));
        camera.pan({30, -12});
        QCOMPARE(text(camera.seen(held)), text(place + QPointF(30, -12)));
        camera.orbit(0, 10);
        QCOMPARE(camera.height(), Camera::fromAbove);  // not over the top
        camera.orbit(0, -10);
        QVERIFY(camera.height() > 0);
    }

    void tap_choosesTheNearestLineAndGoesThroughThoseUponEachOther() {
        Camera camera = cameraAt(0, Camera::fromAbove);
        camera.zoom(1000 / camera.pixelsPerMetre(), screen.center());
        const Position a = camera.centre() + Position{-0.1, 0, 0}, b = camera.centre() + Position{0.1, 0, 0};
        const Position c = b + Position{0, 0.1, 0};
        const std::vector<PathMove> moves = {straight(2, a, b), straight(5, b, c), straight(7, b, a)};
        const auto tap = [&](double right, double up, int chosen) {
            return app::lineAt(moves, camera, screen.center() + QPointF(right, -up), 24, chosen).value_or(-1);
        };
        QCOMPARE(tap(98, 60, -1), 5);
        QCOMPARE(tap(60, 30, -1), -1);  // out of reach
        // There and back on the same way.
        QCOMPARE(tap(0, 5, -1), 2);
        QCOMPARE(tap(0, 5, 2), 7);
        QCOMPARE(tap(0, 5, 7), 2);
        QCOMPARE(tap(0, 5, 5), 2);  // another one was chosen
    }

    void lines_belongToTheWeldAroundThem() {
        // Lines: 0 move, 1 start, 2 and 3 weld, 4 stop, 5 move, 6 start, 7 weld, 8 stop.
        const Position p{0, 0, 0}, q{0.1, 0, 0};
        const std::vector<PathMove> moves = {straight(0, p, p), straight(2, p, q, 0), straight(3, q, p, 0),
                                             straight(5, p, q), straight(7, q, p, 1)};
        QVector<int> seams;
        for (int line = 0; line < 9; ++line) {
            seams << app::seamOf(moves, line);
        }
        QCOMPARE(seams, QVector<int>({-1, 0, 0, 0, 0, -1, 1, 1, 1}));
        QCOMPARE(app::seamCount(moves), 2);
        QCOMPARE(app::lengthOf(app::seamPath(moves, 0)), 0.2);
    }

    void skeleton_endsWhereTheToolIs() {
        for (const int axes : {6, 7}) {
            const sim::Arm arm(axes);
            const auto places = arm.skeleton(arm.home());
            const auto tool = arm.forward(arm.home()).trans;
            const auto apart = [](const auto& one, const auto& other) {
                return prog::distance({one[0], one[1], one[2]}, {other[0], other[1], other[2]});
            };
            QVERIFY(places.size() == 7 && apart(places.back(), tool) < 1e-6);
            QVERIFY(qAbs(apart(places[2], places[3]) - 0.62) < 1e-9);
            QVERIFY(qAbs(apart(places[3], places[4]) - 0.70) < 1e-9);
            QVERIFY(qAbs(apart(places[5], places[6]) - 0.15) < 1e-9);
        }
    }

    void bead_paintedInPartsIsTheSameAsAtOnce() {
        QPolygonF track;
        for (int i = 0; i <= 90; ++i) {
            track << QPointF(120 + 80 * std::cos(i * 0.04), 110 + 80 * std::sin(i * 0.04));
        }
        QImage whole(240, 220, QImage::Format_RGB32), parts = whole;
        whole.fill(Qt::white);
        parts.fill(Qt::white);
        QPainter once(&whole), often(&parts);
        look::paintBead(&once, track, 14, 0, true);
        QPolygonF grown;
        double done = 0;
        for (const QPointF& point : track) {
            grown << point;
            look::paintBead(&often, grown, 14, done, grown.size() == track.size());
            done = look::lengthOf(grown);
        }
        int others = 0;
        for (int y = 0; y < whole.height(); ++y) {
            for (int x = 0; x < whole.width(); ++x) {
                others += qAbs(qGray(whole.pixel(x, y)) - qGray(parts.pixel(x, y))) > 80 ? 1 : 0;
            }
        }
        QVERIFY2(others < 10, qPrintable(QString::number(others)));
    }

    void profile_keepsJumpsAndItsBounds() {
        app::ProfileRecorder recorder;
        for (int i = 0; i < 100000; ++i) {
            recorder.add({i * 0.05, 10.0 + i % 2, i < 60000 ? 70.0 : 40.0});
        }
        QVERIFY(recorder.samples().size() <= app::ProfileRecorder::mostSamples);
        const app::SeamProfile part = app::partOf(recorder.samples(), 2900, 3100);
        QVERIFY(part.size() > 50 && part.size() <= 800 && part.front().mm < 2 && part.back().mm > 198);
        const auto jump = std::find_if(part.begin(), part.end(),
                                       [](const app::ProfileSample& at) { return at.powerPct < 50; });
        QVERIFY2(qAbs(jump->mm - 100) < 0.2, qPrintable(QString::number(jump->mm)));
        QCOMPARE(app::profileFrom(app::jsonOf(part)).size(), part.size());
    }
};

LUMO_TEST(AppPath)
#include "test_path.moc"
