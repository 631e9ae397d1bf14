// The libFuzzer program: FUZZ_TARGET names the target. libFuzzer's own changes of bytes seldom get past the
// parser, so half of the inputs that are JSON are changed as trees of values, all others as bytes.

#include "fuzz/fuzz.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVector>

#include <cstring>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using Random = std::minstd_rand;

QVector<QString> words;  ///< of the dictionary that libFuzzer was started with

int below(Random& random, int limit) {
    return limit > 0 ? int(random() % unsigned(limit)) : 0;
}

QJsonValue scalar(Random& random) {
    static const double numbers[] = {0,   1,     -1,         2,           18,           19,    20,
                                     100, 1e9,   2e9,        -2e9,        1e19,         1e300, 1e-300,
                                     0.5, -0.25, 2147483647, 2147483648., -2147483648., 65536};
    const double number = numbers[random() % std::size(numbers)];
    const QJsonValue kinds[] = {
        QJsonValue(), random() % 2 == 0, QString::number(number),
        QJsonArray(), QJsonObject(),     words.isEmpty() ? QString() : words[below(random, words.size())]};
    const int kind = below(random, int(std::size(kinds)) + 2);
    return kind < int(std::size(kinds)) ? kinds[kind] : QJsonValue(number);
}

/// A value that is found by walking down at random.
QJsonValue part(const QJsonValue& whole, Random& random) {
    const QJsonArray array = whole.toArray();
    const QJsonObject object = whole.toObject();
    if (random() % 3 == 0 || (array.isEmpty() && object.isEmpty()))
        return whole;
    return part(array.isEmpty() ? (object.begin() + below(random, object.size())).value()
                                : array.at(below(random, array.size())),
                random);
}

QJsonValue changed(const QJsonValue& value, Random& random) {
    if (random() % 16 == 0 || !(value.isArray() || value.isObject()))
        return random() % 4 ? scalar(random) : part(value, random);
    QJsonArray array = value.toArray();
    QJsonObject object = value.toObject();
    const QString word = words.isEmpty() ? QString() : words[below(random, words.size())];
    const QString key = object.isEmpty() ? word : (object.begin() + below(random, object.size())).key();
    const int at = below(random, array.size());
    const int what = array.isEmpty() && object.isEmpty() ? 0 : below(random, 8);
    if (value.isObject()) {
        if (what == 0)
            object.insert(word, random() % 2 ? scalar(random) : part(value, random));
        else if (what == 1)
            object.remove(key);
        else
            object.insert(key, changed(object.value(key), random));
        return object;
    }
    if (what == 0)
        array.insert(at, part(value, random));
    else if (what == 1)
        array.removeAt(at);
    else if (what == 2)
        array.insert(at, QJsonValue(array.at(below(random, array.size()))));
    else
        array[at] = changed(array.at(at), random);
    return array;
}

bool isDocument(const QJsonDocument& document) {
    return document.isArray() || !document.object().isEmpty();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QCoreApplication application(*argc, *argv);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    QFile dictionary(qEnvironmentVariable("FUZZ_WORDS"));
    if (dictionary.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : dictionary.readAll().split('\n')) {
            if (line.startsWith('"') && !line.contains('\\'))
                words.append(QString::fromUtf8(line.mid(1, line.size() - 2)));
        }
    }
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
    QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size)));
    for (int changes = random() % 2 && isDocument(document) ? 1 + below(random, 3) : 0; changes > 0;
         --changes) {
        const QJsonValue value =
            changed(document.isArray() ? QJsonValue(document.array()) : document.object(), random);
        document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
        const QByteArray text = document.toJson(QJsonDocument::Compact);
        if (changes == 1 && isDocument(document) && std::size_t(text.size()) <= maxSize) {
            std::memcpy(data, text.constData(), std::size_t(text.size()));
            return std::size_t(text.size());
        }
    }
    return LLVMFuzzerMutate(data, size, maxSize);
}
