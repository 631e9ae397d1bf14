// Makes inputs that parse: libFuzzer's own changes of bytes seldom get past the parser. Half of the
// inputs that are JSON are changed as trees of values, all others as bytes.

#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVector>

#include <algorithm>
#include <cstring>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using Random = std::minstd_rand;

/// The words of the dictionary that libFuzzer was started with.
QVector<QString>& words() {
    static QVector<QString> all;
    return all;
}

int below(Random& random, int limit) {
    return limit > 0 ? int(random() % unsigned(limit)) : 0;
}

QJsonValue scalar(Random& random) {
    static const double numbers[] = {
        0,    1,    -1,   2,     18,         19,          20,           100,   1e9,
        2e9,  -2e9, 1e19, 1e300, -1e300,     1e-300,      0.5,          -0.25, 5e-324,
        1e15, 1e16, 3e3,  65536, 2147483647, 2147483648., -2147483648., 1e308};
    switch (below(random, 8)) {
        case 0:
            return QJsonValue();
        case 1:
            return random() % 2 == 0;
        case 2:
            return QString::number(numbers[random() % std::size(numbers)]);
        case 3:
            return QJsonArray();
        case 4:
            return QJsonObject();
        case 5:
            return words().isEmpty() ? QString() : words()[below(random, words().size())];
        default:
            return numbers[random() % std::size(numbers)];
    }
}

/// A value that is found by walking down at random.
QJsonValue part(const QJsonValue& whole, Random& random) {
    if (random() % 3 == 0)
        return whole;
    if (whole.isArray() && !whole.toArray().isEmpty())
        return part(whole.toArray().at(below(random, whole.toArray().size())), random);
    const QJsonObject object = whole.toObject();
    if (!object.isEmpty())
        return part((object.begin() + below(random, object.size())).value(), random);
    return whole;
}

QJsonValue changed(const QJsonValue& value, const QJsonValue& donor, Random& random);

QJsonArray changedArray(QJsonArray array, const QJsonValue& donor, Random& random) {
    const int at = below(random, array.size());
    switch (array.isEmpty() ? 0 : below(random, 8)) {
        case 0:
            array.insert(at, part(donor, random));
            break;
        case 1:
            array.removeAt(at);
            break;
        case 2:
            array.insert(at, QJsonValue(array.at(below(random, array.size()))));
            break;
        default:
            array[at] = changed(array.at(at), donor, random);
    }
    return array;
}

QJsonObject changedObject(QJsonObject object, const QJsonValue& donor, Random& random) {
    auto entry = object.begin() + below(random, object.size());
    switch (object.isEmpty() ? 0 : below(random, 8)) {
        case 0:
            if (!words().isEmpty())
                object.insert(words()[below(random, words().size())],
                              random() % 2 ? scalar(random) : part(donor, random));
            break;
        case 1:
            object.erase(entry);
            break;
        default: {
            const QString name = entry.key();
            object.insert(name, changed(entry.value(), donor, random));
        }
    }
    return object;
}

QJsonValue changed(const QJsonValue& value, const QJsonValue& donor, Random& random) {
    if (random() % 16 == 0)
        return random() % 2 ? scalar(random) : part(donor, random);
    if (value.isArray())
        return changedArray(value.toArray(), donor, random);
    if (value.isObject())
        return changedObject(value.toObject(), donor, random);
    return random() % 4 ? scalar(random) : part(donor, random);
}

QJsonValue valueOf(const std::uint8_t* data, std::size_t size) {
    const auto document =
        QJsonDocument::fromJson(QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size)));
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

/// 0 when it does not fit or is no document.
std::size_t store(const QJsonValue& value, std::uint8_t* data, std::size_t maxSize) {
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    const QByteArray text = document.toJson(QJsonDocument::Compact);
    if (std::size_t(text.size()) > maxSize)
        return 0;
    std::memcpy(data, text.constData(), std::size_t(text.size()));
    return std::size_t(text.size());
}

bool isDocument(const QJsonValue& value) {
    return value.isArray() || (value.isObject() && !value.toObject().isEmpty());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    const QByteArray option = "-dict=";
    for (int i = 1; i < *argc; ++i) {
        const QByteArray argument((*argv)[i]);
        QFile file(QFile::decodeName(argument.mid(option.size())));
        if (!argument.startsWith(option) || !file.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith('"') && !line.contains('\\'))
                words().append(QString::fromUtf8(line.mid(1, line.size() - 2)));
        }
    }
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
    Random random(seed);
    const QJsonValue value = random() % 2 ? valueOf(data, size) : QJsonValue();
    if (isDocument(value)) {
        QJsonValue result = value;
        for (int changes = 1 + below(random, 3); changes > 0; --changes)
            result = changed(result, value, random);
        if (const std::size_t length = isDocument(result) ? store(result, data, maxSize) : 0)
            return length;
    }
    return LLVMFuzzerMutate(data, size, maxSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize,
                                                 std::uint8_t* out, std::size_t maxSize, unsigned int seed) {
    Random random(seed);
    const QJsonValue value = valueOf(first, firstSize);
    const QJsonValue donor = valueOf(second, secondSize);
    return isDocument(value) ? store(changed(value, donor, random), out, maxSize) : 0;
}
