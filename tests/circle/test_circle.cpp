// The geometry of full circles: start point, arc midpoints, and which points make no circle.

#include "executor/circle.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>
#include <memory>
#include <random>

namespace {

constexpr double pi = 3.14159265358979323846;

struct Vec {
    double x = 0, y = 0, z = 0;
};
Vec operator+(const Vec& a, const Vec& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
Vec operator-(const Vec& a, const Vec& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Vec operator*(const Vec& a, double k) {
    return {a.x * k, a.y * k, a.z * k};
}
double dot(const Vec& a, const Vec& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
Vec cross(const Vec& a, const Vec& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double norm(const Vec& a) {
    return std::sqrt(dot(a, a));
}

/// A circle in space and the point at an angle on it.
struct Circle {
    Vec centre;
    Vec u, v;  // orthonormal
    double radius = 0;

    Circle(const Vec& c, const Vec& normal, double r) : centre(c), radius(r) {
        const Vec n = normal * (1 / norm(normal));
        const Vec helper = std::abs(n.x) < 0.9 ? Vec{1, 0, 0} : Vec{0, 1, 0};
        u = cross(n, helper);
        u = u * (1 / norm(u));
        v = cross(n, u);
    }
    Vec at(double degrees) const {
        const double a = degrees * pi / 180;
        return centre + u * (radius * std::cos(a)) + v * (radius * std::sin(a));
    }
    /// Angle of a point in degrees, [0, 360).
    double angleOf(const Vec& p) const {
        const Vec d = p - centre;
        const double a = std::atan2(dot(d, v), dot(d, u)) * 180 / pi;
        return a < 0 ? a + 360 : a;
    }
    double distanceOf(const Vec& p) const {
        const Vec d = p - centre;
        const double height = dot(d, cross(u, v));
        return std::hypot(std::hypot(dot(d, u), dot(d, v)) - radius, height);
    }
};

std::unique_ptr<ModuleObject> pointNode(const Vec& p) {
    auto node = std::make_unique<ModuleObject>();
    node->loadJson(nullptr, QJsonObject{{"trans", QJsonArray{p.x, p.y, p.z}}, {"rot", QJsonArray{0, 0, 0}}});
    return node;
}

Vec transOf(const ModuleObject& node) {
    const ModuleObject* t = node.c(QStringLiteral("trans"));
    return {t->c(0)->getDouble(), t->c(1)->getDouble(), t->c(2)->getDouble()};
}

/// Receives what is logged while it lives, as "<level> <text>".
struct LogLines {
    QObject scope;
    QStringList lines;

    LogLines() {
        QObject::connect(mendo::LogHub::instance(), &mendo::LogHub::line, &scope,
                         [this](const QString& level, const QString& text) { lines << level + ' ' + text; });
    }
};

std::array<Vec, 3> midpoints(const Vec& s, const Vec& p1, const Vec& p2) {
    std::array<ModuleObject, 3> aux;
    calcAux(pointNode(s).get(), pointNode(p1).get(), pointNode(p2).get(), &aux[0], &aux[1], &aux[2]);
    return {transOf(aux[0]), transOf(aux[1]), transOf(aux[2])};
}

CircleFault faultOf(const Vec& s, const Vec& p1, const Vec& p2) {
    return circleFault(pointNode(s).get(), pointNode(p1).get(), pointNode(p2).get());
}

}  // namespace

Q_DECLARE_METATYPE(Vec)
Q_DECLARE_METATYPE(CircleFault)

class TestCircle : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { mendo::LogHub::instance()->setConsole(false); }
    void midpoints_halveTheArcs_data();
    void midpoints_halveTheArcs();
    void midpoints_ofRandomCircles_lieOnTheirArcs();
    void midpoints_replaceTransOnly();
    void midpoints_areLogged();
    void midpoints_missingCoordinatesAreZero();
    void midpoints_ofPointsThatRoundingTurnsOver();
    void midpoints_ofPointsThatRoundingMixesUp();
    void angle_turnsAboutTheAxis_data();
    void angle_turnsAboutTheAxis();
    void rotation_data();
    void rotation();
    void fault_data();
    void fault();
    void startPoint_isThePreviousTarget_data();
    void startPoint_isThePreviousTarget();
};

void TestCircle::midpoints_halveTheArcs_data() {
    QTest::addColumn<Vec>("centre");
    QTest::addColumn<Vec>("normal");
    QTest::addColumn<double>("radius");
    QTest::addColumn<QList<double>>("degrees");
    QTest::addColumn<double>("tolerance");
    const auto row = [](const char* name, Vec centre, Vec normal, double radius, QList<double> degrees,
                        double tolerance) {
        QTest::newRow(name) << centre << normal << radius << degrees << tolerance;
    };
    // A half turn puts the cosine at its limit, a long last arc needs an angle above a half turn.
    row("quarter, quarter, half", {0.1, 0, 0}, {0, 0, -1}, 0.1, {0, 90, 180}, 1e-6);
    row("thirds", {0.5, 0, 0.4}, {0, 0, 1}, 0.08, {10, 130, 250}, 1e-6);
    row("clockwise seen from above", {0.5, 0.2, 0.4}, {0, 0, -1}, 0.08, {0, 100, 200}, 1e-6);
    row("long first arc", {0.5, 0, 0.4}, {0, 0, 1}, 0.05, {0, 250, 300}, 1e-6);
    row("long last arc", {0.5, 0, 0.4}, {0, 0, 1}, 0.05, {0, 20, 50}, 1e-5);
    row("upright", {0.6, 0, 0.5}, {0, 1, 0}, 0.12, {0, 90, 200}, 1e-6);
    row("tilted", {0.6, -0.3, 0.5}, {1, 2, 3}, 0.12, {15, 140, 260}, 1e-6);
    row("pipe of 6 mm at the end of the reach", {1.1, 0.6, 0.3}, {0, 0, 1}, 0.003, {0, 120, 240}, 1e-6);
    row("wheel of 2 m", {0, 0, 0.4}, {0, 0, 1}, 1.0, {0, 90, 180}, 1e-5);
    row("far from the origin", {40, -25, 10}, {1, 1, 1}, 0.1, {0, 110, 230}, 2e-5);
}

void TestCircle::midpoints_halveTheArcs() {
    QFETCH(Vec, centre);
    QFETCH(Vec, normal);
    QFETCH(double, radius);
    QFETCH(QList<double>, degrees);
    QFETCH(double, tolerance);
    const Circle circle(centre, normal, radius);
    const Vec s = circle.at(degrees[0]), p1 = circle.at(degrees[1]), p2 = circle.at(degrees[2]);
    QCOMPARE(int(faultOf(s, p1, p2)), int(CircleFault::None));
    const auto aux = midpoints(s, p1, p2);
    const std::array<double, 3> ends{degrees[1], degrees[2], degrees[0] + 360};
    for (int i = 0; i < 3; ++i) {
        const Vec expected = circle.at((degrees[i] + ends[std::size_t(i)]) / 2);
        const double off = norm(aux[std::size_t(i)] - expected);
        QVERIFY2(off < tolerance,
                 qPrintable(QStringLiteral("midpoint %1 is off by %2 m").arg(i + 1).arg(off)));
    }
}

// Whatever is accepted must send the robot round the circle: each midpoint on its own arc.
void TestCircle::midpoints_ofRandomCircles_lieOnTheirArcs() {
    std::mt19937 random(20240611);
    std::uniform_real_distribution<double> unit(0, 1), side(-1, 1);
    int accepted = 0, refused = 0;
    for (int n = 0; n < 3000; ++n) {
        const Vec centre{1.4 * side(random), 1.4 * side(random), 1.4 * side(random)};
        const Vec normal{side(random), side(random), side(random) + 1.5};
        const Circle circle(centre, normal, std::pow(10.0, -3.3 + 4.3 * unit(random)));  // 0.5 mm to 10 m
        // From three points all round to three within a sliver.
        const double spread = 350 * std::pow(10.0, -3 * unit(random));
        const double start = 360 * unit(random);
        const double first = spread * (0.02 + 0.96 * unit(random));
        const Vec s = circle.at(start), p1 = circle.at(start + first), p2 = circle.at(start + spread);
        if (faultOf(s, p1, p2) != CircleFault::None) {
            ++refused;
            continue;
        }
        ++accepted;
        const auto aux = midpoints(s, p1, p2);
        const auto from = [&](const Vec& p) { return std::fmod(circle.angleOf(p) - start + 720, 360.0); };
        const QString where = QStringLiteral("circle %1: radius %2, %3 and %4 degrees")
                                  .arg(n)
                                  .arg(circle.radius)
                                  .arg(first)
                                  .arg(spread);
        for (const Vec& point : aux) {
            QVERIFY2(circle.distanceOf(point) < 0.001, qPrintable(where));
        }
        QVERIFY2(from(aux[0]) < first, qPrintable(where));
        QVERIFY2(from(aux[1]) > first && from(aux[1]) < spread, qPrintable(where));
        QVERIFY2(from(aux[2]) > spread, qPrintable(where));
    }
    QVERIFY(accepted > 1500);
    QVERIFY(refused > 100);
}

void TestCircle::midpoints_replaceTransOnly() {
    const auto s = pointNode({0, 0, 0}), p1 = pointNode({0.1, 0.1, 0}), p2 = pointNode({0.2, 0, 0});
    auto aux1 = pointNode({9, 9, 9}), aux2 = pointNode({9, 9, 9}), aux3 = pointNode({9, 9, 9});
    calcAux(s.get(), p1.get(), p2.get(), aux1.get(), aux2.get(), aux3.get());
    const QJsonObject result = aux3->exportToJson().toObject();
    QCOMPARE(result.keys(), QStringList({"rot", "trans"}));
    const QJsonArray trans = result.value("trans").toArray();
    QCOMPARE(trans.size(), 3);
    // Single precision, as the controller gets it.
    QCOMPARE(trans[0].toDouble(), double(float(trans[0].toDouble())));
    QVERIFY(std::abs(trans[0].toDouble() - 0.1) < 1e-6);
    QVERIFY(std::abs(trans[1].toDouble() + 0.1) < 1e-6);
}

void TestCircle::midpoints_areLogged() {
    const LogLines log;
    midpoints({0, 0, 0}, {0.5, 0.5, 0}, {1, 0, 0});
    const QStringList& lines = log.lines;
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[0],
             "I point1: QVector3D(0, 0, 0) , point2: QVector3D(0.5, 0.5, 0) , point3: QVector3D(1, 0, 0)");
    QCOMPARE(lines[1], "I center: QVector3D(0.5, 0, 0) r: 0.5");
    QCOMPARE(lines[2],
             "I vc1: QVector3D(-0.5, 0, 0) , vc2: QVector3D(0, 0.5, 0) , vc3: QVector3D(0.5, 0, 0)");
    QVERIFY2(QRegularExpression("^W aux1: QVector3D\\(.*\\) aux2: QVector3D\\(.*\\) aux3: QVector3D\\(.*\\)$")
                 .match(lines[3])
                 .hasMatch(),
             qPrintable(lines[3]));
}

void TestCircle::midpoints_missingCoordinatesAreZero() {
    std::array<ModuleObject, 3> points, aux;
    const QJsonArray trans[] = {{}, {0.1}, {0.0, 0.1}};
    for (std::size_t i = 0; i < 3; ++i) {
        points[i].loadJson(nullptr, QJsonObject{{"trans", trans[i]}});
    }
    QCOMPARE(int(circleFault(&points[0], &points[1], &points[2])), int(CircleFault::None));
    calcAux(&points[0], &points[1], &points[2], &aux[0], &aux[1], &aux[2]);
    const auto expected = midpoints({0, 0, 0}, {0.1, 0, 0}, {0, 0.1, 0});
    for (std::size_t i = 0; i < 3; ++i) {
        QVERIFY(norm(transOf(aux[i]) - expected[i]) < 1e-9);
    }
}

// A kilometre away single precision sees this sliver from its other side: all three arcs are found
// the long way round.
void TestCircle::midpoints_ofPointsThatRoundingTurnsOver() {
    const Vec s{844.202, 0.000482}, p1{844.2015, -0.001025}, p2{844.2042, 0.007426};
    const auto aux = midpoints(s, p1, p2);
    QVERIFY(norm(aux[0] - s) < 0.005);
    QVERIFY(norm(aux[1] - p1) > 0.5);
    QVERIFY(norm(aux[2] - p2) < 0.005);
}

// Still further away the three arcs fit neither way round, which is told.
void TestCircle::midpoints_ofPointsThatRoundingMixesUp() {
    const LogLines log;
    midpoints({8577.2, 0.051}, {8578.107, 0.267}, {8577.912, -0.587});
    const QStringList lines = log.lines.filter("calc wrong theta");
    QCOMPARE(lines.size(), 1);
    const QRegularExpressionMatch angles =
        QRegularExpression("^E calc wrong theta: (\\S+) (\\S+) (\\S+)$").match(lines[0]);
    const double expected[] = {-122.11, -249.73, -232.56};
    for (int i = 0; i < 3; ++i) {
        QVERIFY2(std::abs(angles.captured(i + 1).toDouble() - expected[i]) < 0.02, qPrintable(lines[0]));
    }
}

void TestCircle::angle_turnsAboutTheAxis_data() {
    QTest::addColumn<QVector3D>("a");
    QTest::addColumn<QVector3D>("b");
    QTest::addColumn<QVector3D>("axis");
    QTest::addColumn<double>("degrees");
    const QVector3D x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
    QTest::newRow("quarter") << x << y << z << 90.0;
    QTest::newRow("three quarters") << y << x << z << 270.0;
    QTest::newRow("axis turned over") << x << y << -z << 270.0;
    QTest::newRow("half") << x << -x << z << 180.0;
    QTest::newRow("none") << y << y << z << 0.0;
    QTest::newRow("lengths do not matter") << x * 0.2F << (x + y) * 0.2F / std::sqrt(2.0F) << z << 45.0;
    // The quotient rounds to a number above 1 for some of these vectors.
    for (int i = 1; i <= 40; ++i) {
        const QVector3D v(0.1F + 0.013F * float(i), 0.2F, 0.3F - 0.007F * float(i));
        const QVector3D axis = QVector3D::crossProduct(v, z).normalized();
        QTest::newRow(qPrintable(QStringLiteral("itself %1").arg(i))) << v << v << axis << 0.0;
        QTest::newRow(qPrintable(QStringLiteral("opposite %1").arg(i))) << v << -v << axis << 180.0;
    }
}

void TestCircle::angle_turnsAboutTheAxis() {
    QFETCH(QVector3D, a);
    QFETCH(QVector3D, b);
    QFETCH(QVector3D, axis);
    QFETCH(double, degrees);
    const double theta = calcTheta(a, b, axis) * 180 / pi;
    QVERIFY2(std::abs(theta - degrees) < 0.05, qPrintable(QString::number(theta)));
}

void TestCircle::rotation_data() {
    QTest::addColumn<QVector3D>("v");
    QTest::addColumn<QVector3D>("axis");
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QVector3D>("turned");
    const QVector3D diagonal = QVector3D(1, 1, 1).normalized();
    QTest::newRow("x to y") << QVector3D(2, 0, 0) << QVector3D(0, 0, 1) << 90.0 << QVector3D(0, 2, 0);
    QTest::newRow("backwards") << QVector3D(2, 0, 0) << QVector3D(0, 0, 1) << -90.0 << QVector3D(0, -2, 0);
    QTest::newRow("along the axis") << QVector3D(0, 0, 3) << QVector3D(0, 0, 1) << 75.0 << QVector3D(0, 0, 3);
    QTest::newRow("partly along it") << QVector3D(1, 0, 5) << QVector3D(0, 0, 1) << 180.0
                                     << QVector3D(-1, 0, 5);
    QTest::newRow("cyclic") << QVector3D(1, 2, 3) << diagonal << 120.0 << QVector3D(3, 1, 2);
}

void TestCircle::rotation() {
    QFETCH(QVector3D, v);
    QFETCH(QVector3D, axis);
    QFETCH(double, degrees);
    QFETCH(QVector3D, turned);
    QVERIFY((calcRotation(v, axis, degrees * pi / 180) - turned).length() < 1e-5F);
}

void TestCircle::fault_data() {
    QTest::addColumn<Vec>("s");
    QTest::addColumn<Vec>("p1");
    QTest::addColumn<Vec>("p2");
    QTest::addColumn<CircleFault>("expected");
    const auto row = [](const char* name, Vec s, Vec p1, Vec p2, CircleFault expected) {
        QTest::newRow(name) << s << p1 << p2 << expected;
    };
    using Fault = CircleFault;
    const Vec a{0.513, 0.127, 0.351}, b{0.613, 0.227, 0.351};
    row("all the same", a, a, a, Fault::Coincident);
    row("start and first", a, a, b, Fault::Coincident);
    row("first and second", a, b, b, Fault::Coincident);
    row("second and start", a, b, a, Fault::Coincident);
    row("taught twice, 2 um apart", a, b, b + Vec{1e-6, 1e-6, 1e-6}, Fault::Coincident);
    row("along an axis", {0.1, 0, 0}, {0.2, 0, 0}, {0.4, 0, 0}, Fault::Collinear);
    row("oblique", a, a + (b - a) * (1.0 / 3), b, Fault::Collinear);
    row("going back", a, b, a + (b - a) * 0.7, Fault::Collinear);
    row("oblique, 5 um of noise", a, a + (b - a) * 0.4 + Vec{0, 0, 5e-6}, b, Fault::Collinear);
    row("0.02 mm of noise over 300 mm", {0.4, 0, 0.3}, {0.55, 0.00002, 0.3}, {0.7, 0, 0.3}, Fault::Collinear);
    row("line far from the origin", {400, 0, 0}, {400.1, 0.001, 0}, {400.2, 0, 0}, Fault::Collinear);
    row("flat arc, 1.5 mm high over 60 mm", {0.5, 0, 0.3}, {0.53, 0.0015, 0.3}, {0.56, 0, 0.3}, Fault::None);
    row("arc just high enough", {0.5, 0, 0.3}, {0.55, 0.00098, 0.3}, {0.6, 0, 0.3}, Fault::None);
    row("arc just too flat", {0.5, 0, 0.3}, {0.55, 0.00085, 0.3}, {0.6, 0, 0.3}, Fault::Collinear);
    row("wire of 1 mm", {0.5, 0, 0.3}, {0.5005, 0.0005, 0.3}, {0.501, 0, 0.3}, Fault::None);
    row("two points 1 mm apart", {0.5, 0, 0.3}, {0.5, 0.001, 0.3}, {0.7, 0, 0.3}, Fault::None);
    row("circle far from the origin", {40, 0, 0}, {40.1, 0.1, 0}, {40.2, 0, 0}, Fault::None);
}

void TestCircle::fault() {
    QFETCH(Vec, s);
    QFETCH(Vec, p1);
    QFETCH(Vec, p2);
    QFETCH(CircleFault, expected);
    QCOMPARE(int(faultOf(s, p1, p2)), int(expected));
    // In any order of teaching.
    QCOMPARE(int(faultOf(p1, p2, s)), int(expected));
    QCOMPARE(int(faultOf(p2, p1, s)), int(expected));
}

void TestCircle::startPoint_isThePreviousTarget_data() {
    // Each row: the program's types; the last one is the circle asked about. A statement's points
    // have the id 10·line, and 10·line + 1 for the second; the posture has 999.
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<int>("id");
    QTest::newRow("first") << QStringList{"moveCC"} << 999;
    QTest::newRow("after a line") << QStringList{"moveL", "moveCC"} << 0;
    QTest::newRow("after a joint move") << QStringList{"moveL", "moveJ", "moveCC"} << 10;
    QTest::newRow("after an arc") << QStringList{"moveL", "moveC", "moveCC"} << 11;
    QTest::newRow("after a circle") << QStringList{"moveL", "moveCC", "moveCC"} << 0;
    QTest::newRow("after two circles") << QStringList{"moveC", "moveCC", "moveCC", "moveCC"} << 1;
    QTest::newRow("only circles before") << QStringList{"moveCC", "moveCC"} << 999;
    QTest::newRow("others between") << QStringList{"moveL", "open", "delay", "setDO", "moveCC"} << 0;
    QTest::newRow("no move before") << QStringList{"open", "delay", "moveCC"} << 999;
}

void TestCircle::startPoint_isThePreviousTarget() {
    QFETCH(QStringList, types);
    QFETCH(int, id);
    ModuleObject posture;
    posture.set(nullptr, "id", 999);
    kordservice()->set(nullptr, "sys.posture", &posture);
    ModuleObject program;
    for (int line = 0; line < types.size(); ++line) {
        ModuleObject* statement = program.append(nullptr);
        statement->set(nullptr, "type", types[line]);
        if (types[line].startsWith("move")) {
            statement->set(nullptr, "point.id", 10 * line);
        }
        if (types[line].startsWith("moveC")) {
            statement->set(nullptr, "point1.id", 10 * line + 1);
        }
    }
    const ModuleObject* start = findLastTargetPosNode(program.c(types.size() - 1));
    QCOMPARE(start->c("id")->getInt(-1), id);
}

QTEST_GUILESS_MAIN(TestCircle)
#include "test_circle.moc"
