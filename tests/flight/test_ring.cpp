#include "flight/ringfile.h"
#include "flight/ringlayout.h"
#include "flight/ringreader.h"
#include "support/suite.h"
#include "support/text.h"

#include <QFile>
#include <QRandomGenerator>

namespace {

constexpr qint64 smallest = 1 << 20;

/// The record with a number; some reach over several segments.
flight::Record recordOf(quint64 number) {
    flight::Record record;
    record.kind = flight::Record::Kind::Value;
    record.by = flight::Record::By::Cell;
    record.ms = qint64(number);
    record.wallMs = qint64(number) + 1000000;
    const int size = number % 100 == 0 ? 200000 : int(number % 700);
    record.body = QByteArray::number(number) + QByteArray(size, char('a' + number % 26));
    return record;
}

void append(flight::Sink* ring, quint64 first, quint64 last) {
    for (quint64 number = first; number <= last; ++number) {
        QCOMPARE(ring->append(recordOf(number)), number);
    }
}

flight::Recording read(const QString& file) {
    QString error;
    const auto recording = flight::readRing(file, &error);
    return recording ? *recording : flight::Recording();
}

std::unique_ptr<flight::RingFile> open(const QString& file, qint64 bytes = smallest) {
    flight::RingProblem problem;
    return flight::RingFile::open(file, bytes, &problem);
}

/// Whether each record is the one that was written under its number, without a gap.
bool isAsWritten(const flight::Recording& recording, bool gaps = false) {
    quint64 last = 0;
    for (const flight::Record& record : recording.records) {
        const flight::Record written = recordOf(record.number);
        const bool isNext = last == 0 || record.number == last + 1 || (gaps && record.number > last);
        if (!isNext || record.body != written.body || record.ms != written.ms ||
            record.wallMs != written.wallMs) {
            return false;
        }
        last = record.number;
    }
    return true;
}

}  // namespace

/// The ring file: what is in it, however the process that wrote it ended.
class TestRing : public QObject {
    Q_OBJECT

private slots:
    void newestRecordsStayWhenTheRingIsFull() {
        constexpr quint64 count = 3000;
        {
            const auto ring = open("r.ring");
            append(ring.get(), 1, count);
        }
        const flight::Recording recording = read("r.ring");
        QVERIFY(isAsWritten(recording));
        QCOMPARE(recording.damaged, 0);
        QCOMPARE(recording.records.back().number, count);
        qint64 bytes = 0;
        for (const flight::Record& record : recording.records) {
            bytes += record.body.size();
        }
        QVERIFY2(bytes > smallest * 3 / 4 && bytes <= smallest, qPrintable(QString::number(bytes)));
        QVERIFY(QFileInfo("r.ring").size() < smallest + 8192);
    }

    void nextProcessGoesOnBehindTheLastRecord() {
        {
            const auto ring = open("n.ring");
            append(ring.get(), 1, 250);
            QVERIFY2(!open("n.ring"), "two writers at a time");
        }
        {
            const auto ring = open("n.ring");
            append(ring.get(), 251, 400);
        }
        const flight::Recording recording = read("n.ring");
        QVERIFY(isAsWritten(recording));
        QCOMPARE(recording.records.back().number, quint64(400));
        // Another size begins anew; the old recording is kept.
        append(open("n.ring", 2 * smallest).get(), 1, 3);
        QCOMPARE(read("n.ring").records.size(), std::size_t(3));
        QCOMPARE(read("n.ring.old").records.back().number, quint64(400));
    }

    void newestPartIsARecordingOfItsOwn() {
        append(open("p.ring").get(), 1, 3000);
        test::writeFile("part.ring", flight::newestOf("p.ring", smallest / 4));
        const flight::Recording part = read("part.ring");
        QVERIFY(isAsWritten(part));
        QCOMPARE(part.records.back().number, quint64(3000));
        QVERIFY(QFileInfo("part.ring").size() <= smallest / 4 + 4096);
    }

    /// A power cut may leave the end of the last record unwritten.
    void tornLastRecordIsSkipped() {
        append(open("t.ring").get(), 1, 50);
        QByteArray bytes = test::contentOf("t.ring");
        const int end = bytes.lastIndexOf(QByteArray(40, char('a' + 50 % 26))) + 20;
        bytes.replace(end, 20, QByteArray(20, '\0'));
        test::writeFile("t.ring", bytes);
        const flight::Recording recording = read("t.ring");
        QVERIFY(isAsWritten(recording));
        QCOMPARE(recording.records.back().number, quint64(49));
        QCOMPARE(recording.damaged, 0);
        append(open("t.ring").get(), 50, 60);
        QCOMPARE(read("t.ring").records.back().number, quint64(60));
        QVERIFY(isAsWritten(read("t.ring")));
    }

    /// Whatever is written over it: a record that is read is one that was recorded.
    void damagedFileGivesNoWrongRecord() {
        append(open("d.ring").get(), 1, 2000);
        const QByteArray whole = test::contentOf("d.ring");
        QRandomGenerator random(7);
        int lost = 0;
        for (int round = 0; round < 60; ++round) {
            QByteArray bytes = whole;
            for (int hit = 0; hit < 5; ++hit) {
                bytes[random.bounded(bytes.size())] = char(random.bounded(256));
            }
            test::writeFile("e.ring",
                            bytes.left(round % 3 == 0 ? random.bounded(bytes.size()) : bytes.size()));
            const flight::Recording recording = read("e.ring");
            QVERIFY(isAsWritten(recording, true));
            lost += recording.records.size() < read("d.ring").records.size() ? 1 : 0;
        }
        QVERIFY(lost > 20);
        QString error;
        test::writeFile("no.ring", "something else");
        QVERIFY(!flight::readRing("no.ring", &error));
        QCOMPARE(error, QString("is no recording"));
        QVERIFY(!flight::readRing("missing.ring", &error));
    }
};

LUMO_TEST(TestRing)
#include "test_ring.moc"
