#include "bridge/linuxcnc/batch.h"

#include <algorithm>
#include <cmath>

namespace bridge::linuxcnc {

namespace {

constexpr double mmPerM = 1000;
constexpr double smallestZone = 1e-6;   // m
constexpr double smallestCutMm = 0.01;  // P0 would mean any

/// Up to a nanometre, without zeros behind; never "-0".
QString number(double value) {
    QString text = QString::number(value, 'f', 6);
    while (text.endsWith(QLatin1Char('0'))) {
        text.chop(1);
    }
    if (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

QString words(const char* letters, const double* values) {
    QString text;
    for (; *letters; ++letters, ++values) {
        text += QStringLiteral(" %1%2").arg(QLatin1Char(*letters)).arg(number(*values));
    }
    return text;
}

const QString exactly = QStringLiteral("G61.1");

QString within(double cutMm) {
    return QStringLiteral("G64 P%1 Q0").arg(number(std::max(cutMm, smallestCutMm)));
}

/// How the corner from one motion to the next is taken.
QString cornerMode(const Motion& motion, const Course& course, const Course& next) {
    const double zone = std::min({motion.zone, course.lengthM / 2, next.lengthM / 2});
    const double product = dot(course.endDirection, next.startDirection);
    const bool haveDirections = dot(course.endDirection, course.endDirection) > 0 &&
                                dot(next.startDirection, next.startDirection) > 0;
    if (zone < smallestZone || !haveDirections) {
        return exactly;
    }
    const double angle = std::acos(std::min(std::max(product, -1.0), 1.0));
    return within(zone * mmPerM * std::tan(angle / 4));
}

class Writer {
public:
    explicit Writer(Batch* batch) : batch_(batch) {}

    void write(int owner, const Course& course, const QString& endMode) {
        for (std::size_t i = 0; i < course.pieces.size(); ++i) {
            const Piece& piece = course.pieces[i];
            setMode(owner, i + 1 < course.pieces.size() ? within(0) : endMode);
            if (piece.kind == Piece::Kind::Joints) {
                writeJoints(owner, piece);
            } else {
                append(owner, pathLine(piece));
            }
        }
    }

private:
    void append(int owner, const QString& line) {
        batch_->lines.append(line);
        batch_->owners.push_back(owner);
    }
    /// On a line of its own: P on the line of an arc would count its turns.
    void setMode(int owner, const QString& mode) {
        if (mode != mode_) {
            mode_ = mode;
            append(owner, mode);
        }
    }
    static QString feed(const Piece& piece) {
        return piece.seconds > 0 ? QStringLiteral(" F") + number(60 / piece.seconds)
                                 : QStringLiteral(" F") + number(piece.feedMmPerMin);
    }
    static QString pathLine(const Piece& piece) {
        QString line = piece.seconds > 0 ? QStringLiteral("G93") : QStringLiteral("G94");
        if (piece.kind == Piece::Kind::Line) {
            return line + QStringLiteral(" G1") + words("XYZABC", piece.end.data()) + feed(piece);
        }
        line += QStringLiteral(" G%1 G%2").arg(piece.plane).arg(piece.isLeft ? 3 : 2);
        line += words("XYZABC", piece.end.data());
        const int across = 19 - piece.plane;
        for (int axis = 0; axis < 3; ++axis) {
            if (axis != across) {
                line += QStringLiteral(" %1%2").arg(QLatin1Char("IJK"[axis])).arg(number(piece.centre[axis]));
            }
        }
        return line + feed(piece);
    }
    /// M66 waits until the switch has been made.
    void writeJoints(int owner, const Piece& piece) {
        append(owner, QStringLiteral("M68 E3 Q1"));
        append(owner, QStringLiteral("M66 E0 L0"));
        append(owner, QStringLiteral("G93 G1") + words("XYZABC", piece.end.data()) + feed(piece));
        append(owner, QStringLiteral("M68 E3 Q0"));
        append(owner, QStringLiteral("M66 E0 L0"));
    }

    Batch* batch_;
    QString mode_;
};

}  // namespace

Batch writeBatch(const kin::Arm& arm, const std::vector<Motion>& motions, Place* place) {
    Batch batch;
    std::vector<Course> courses;
    for (const Motion& motion : motions) {
        Course course;
        Place end = *place;
        batch.failure = layCourse(arm, motion, &end, &course);
        if (batch.failure != MotionDone) {
            batch.failedId = motion.id;
            break;
        }
        *place = end;
        courses.push_back(course);
        batch.targets.push_back({motion.id, end.torch.p, false, motion.kind == Motion::Kind::Joint});
    }
    Writer writer(&batch);
    for (std::size_t i = 0; i < courses.size(); ++i) {
        const bool isLast = i + 1 == courses.size();
        const QString mode = isLast ? exactly : cornerMode(motions[i], courses[i], courses[i + 1]);
        batch.targets[i].isCorner = mode != exactly;
        writer.write(int(i), courses[i], mode);
    }
    return batch;
}

}  // namespace bridge::linuxcnc
