// The libFuzzer program; FUZZ_TARGET names the target. Half of the inputs that are JSON are mutated as trees
// of values, because libFuzzer's byte mutations seldom pass the parser; all others as bytes.

#include "fuzz/fuzz.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstring>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using Random = std::minstd_rand;

QStringList words;  ///< of libFuzzer's dictionary

int below(Random& random, int limit) {
    return int(random() % unsigned(limit));
}

QJsonValue scalar(Random& random) {
    static const double numbers[] = {0,   1,     -1,  2,    18,    19,     20,          100,
                                     1e9, 1e300, 0.5, 1e19, 65536, 1e-300, 2147483648., -2147483648.};
    const double number = numbers[random() % std::size(numbers)];
    const QString word = words[below(random, words.size())];
    const QJsonValue kinds[] = {number,       number, QString::number(number), QJsonValue(),
                                word,         word,   QJsonValue(number > 0),  QJsonArray(),
                                QJsonObject()};
    return kinds[random() % std::size(kinds)];
}

/// The value with one part replaced, removed or duplicated.
QJsonValue changed(const QJsonValue& value, Random& random) {
    QJsonArray array = value.toArray();
    QJsonObject object = value.toObject();
    const int what = array.isEmpty() && object.isEmpty() ? 0 : below(random, 12);
    if (what == 0) {
        return scalar(random);
    }
    if (value.isArray()) {
        const int at = below(random, array.size());
        if (what == 1) {
            array.removeAt(at);
        } else if (what == 2) {
            array.insert(at, QJsonValue(array.at(below(random, array.size()))));
        } else {
            array[at] = changed(array.at(at), random);
        }
        return array;
    }
    const QString key = object.keys().at(below(random, object.size()));
    if (what == 1) {
        object.remove(key);
    } else if (what == 2) {
        object.insert(words[below(random, words.size())], object.value(key));
    } else {
        object.insert(key, changed(object.value(key), random));
    }
    return object;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QCoreApplication application(*argc, *argv);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg) {
            std::fprintf(stderr, "%s\n", qPrintable(text));
        }
    });
    QFile dictionary(qEnvironmentVariable("FUZZ_WORDS"));
    if (!dictionary.open(QIODevice::ReadOnly)) {
        qFatal("FUZZ_WORDS does not name the dictionary");
    }
    words = QString::fromUtf8(dictionary.readAll()).remove('"').split('\n', Qt::SkipEmptyParts);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QString target = qEnvironmentVariable("FUZZ_TARGET");
    fuzz::read(target, QByteArray(reinterpret_cast<const char*>(data), int(size)));
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
    Random random(seed);
    const auto document = QJsonDocument::fromJson(QByteArray(reinterpret_cast<const char*>(data), int(size)));
    if (random() % 2 == 0 || document.isNull()) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    const QJsonValue whole = document.isArray() ? QJsonValue(document.array()) : document.object();
    const QByteArray text = QJsonDocument(QJsonArray{changed(whole, random)}).toJson(QJsonDocument::Compact);
    const QByteArray value = text.mid(1, text.size() - 2);
    if (std::size_t(value.size()) > maxSize) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    std::memcpy(data, value.constData(), std::size_t(value.size()));
    return std::size_t(value.size());
}
