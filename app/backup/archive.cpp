#include "app/backup/archive.h"

#include "mendo/clock.h"

#include <minizip/unzip.h>
#include <minizip/zip.h>
#include <QBuffer>
#include <QCoreApplication>
#include <QDateTime>
#include <QSet>

#include <sys/stat.h>
#include <zlib.h>
#include <algorithm>
#include <memory>

namespace app {

namespace {

/// The context of the texts.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(app::Archive)
};

/// Reading and writing for minizip in a QIODevice, which is open and given as `opaque` and as the stream.
QIODevice* deviceOf(voidpf stream) {
    return static_cast<QIODevice*>(stream);
}

voidpf openDevice(voidpf device, const void*, int) {
    return device;
}

uLong readDevice(voidpf, voidpf stream, void* bytes, uLong size) {
    return uLong(std::max<qint64>(0, deviceOf(stream)->read(static_cast<char*>(bytes), qint64(size))));
}

uLong writeDevice(voidpf, voidpf stream, const void* bytes, uLong size) {
    return uLong(std::max<qint64>(0, deviceOf(stream)->write(static_cast<const char*>(bytes), qint64(size))));
}

ZPOS64_T tellDevice(voidpf, voidpf stream) {
    return ZPOS64_T(deviceOf(stream)->pos());
}

long seekDevice(voidpf, voidpf stream, ZPOS64_T offset, int origin) {
    QIODevice* const device = deviceOf(stream);
    const qint64 from = origin == ZLIB_FILEFUNC_SEEK_CUR   ? device->pos()
                        : origin == ZLIB_FILEFUNC_SEEK_END ? device->size()
                                                           : 0;
    const qint64 to = from + qint64(offset);
    return to >= 0 && to <= device->size() && device->seek(to) ? 0 : -1;
}

int closeDevice(voidpf, voidpf) {
    return 0;
}

int errorOf(voidpf, voidpf) {
    return 0;
}

zlib_filefunc64_def functionsOf(QIODevice* device) {
    return {openDevice, readDevice, writeDevice, tellDevice, seekDevice, closeDevice, errorOf, device};
}

struct UnzipClose {
    void operator()(void* zip) const { unzClose(zip); }
};
using Unzip = std::unique_ptr<void, UnzipClose>;

zip_fileinfo madeNow() {
    const QDateTime now = mendo::Clock::current().now();
    const QDate date = now.date();
    const QTime time = now.time();
    zip_fileinfo info{};
    info.tmz_date.tm_sec = uInt(time.second());
    info.tmz_date.tm_min = uInt(time.minute());
    info.tmz_date.tm_hour = uInt(time.hour());
    info.tmz_date.tm_mday = uInt(date.day());
    info.tmz_date.tm_mon = uInt(date.month() - 1);
    info.tmz_date.tm_year = uInt(std::max(date.year(), 1980));  // the format knows none before
    return info;
}

bool addFile(zipFile zip, const ArchiveFile& file) {
    constexpr uLong utf8Name = 1U << 11U;
    const zip_fileinfo info = madeNow();
    const bool isOpen =
        zipOpenNewFileInZip4_64(zip, file.name.toUtf8().constData(), &info, nullptr, 0, nullptr, 0, nullptr,
                                Z_DEFLATED, Z_DEFAULT_COMPRESSION, 0, -MAX_WBITS, DEF_MEM_LEVEL,
                                Z_DEFAULT_STRATEGY, nullptr, 0, 0, utf8Name, 0) == ZIP_OK;
    return isOpen &&
           zipWriteInFileInZip(zip, file.content.constData(), unsigned(file.content.size())) == ZIP_OK &&
           zipCloseFileInZip(zip) == ZIP_OK;
}

bool isPlainName(const QString& name) {
    return !name.isEmpty() && !name.startsWith(QLatin1Char('.')) && !name.contains(QLatin1Char('/')) &&
           !name.contains(QLatin1Char('\\')) && !name.contains(QChar(0)) && name.toUtf8().size() < 256;
}

bool isLink(const unz_file_info64& facts) {
    constexpr int modeShift = 16, systemShift = 8;
    constexpr uLong unixSystem = 3;
    return facts.version >> systemShift == unixSystem && S_ISLNK(facts.external_fa >> modeShift);
}

/// Reads the current file. Nothing when it is damaged.
std::optional<QByteArray> readFile(void* zip, qint64 size) {
    if (unzOpenCurrentFile(zip) != UNZ_OK) {
        return std::nullopt;
    }
    QByteArray bytes(int(size), Qt::Uninitialized);
    char beyond = 0;
    const bool isWhole = unzReadCurrentFile(zip, bytes.data(), unsigned(size)) == size &&
                         unzReadCurrentFile(zip, &beyond, 1) == 0;
    const bool isTrue = unzCloseCurrentFile(zip) == UNZ_OK;  // compares the checksum
    return isWhole && isTrue ? std::optional<QByteArray>(bytes) : std::nullopt;
}

/// What is wrong with an entry, before it is read; empty for a good one.
QString faultOf(const unz_file_info64& facts, const QString& name) {
    if (!isPlainName(name) || isLink(facts)) {
        return Text::tr("压缩包含有不允许的名称：%1").arg(name);
    }
    if ((facts.flag & 1U) != 0) {
        return Text::tr("压缩包已加密");
    }
    return facts.uncompressed_size > ZPOS64_T(mostFileBytes) ? Text::tr("压缩包过大") : QString();
}

/// Name and facts of the current file; false when they cannot be read.
bool readFacts(void* zip, unz_file_info64* facts, QString* name) {
    constexpr uLong longest = 1024;
    char text[longest + 1] = {};
    if (unzGetCurrentFileInfo64(zip, facts, text, longest, nullptr, 0, nullptr, 0) != UNZ_OK ||
        facts->size_filename > longest) {
        return false;
    }
    *name = QString::fromUtf8(text, int(facts->size_filename));
    return true;
}

/// The current file, unless something is wrong with it. `total`: bytes of the files before it, then with it.
std::optional<ArchiveFile> takeFile(void* zip, const QSet<QString>& before, qint64* total, QString* error) {
    unz_file_info64 facts;
    QString name;
    if (!readFacts(zip, &facts, &name)) {
        *error = Text::tr("压缩包已损坏");
        return std::nullopt;
    }
    *error = faultOf(facts, name);
    if (error->isEmpty()) {
        *total += qint64(facts.uncompressed_size);
        if (*total > mostArchiveBytes) {
            *error = Text::tr("压缩包过大");
        } else if (before.contains(name)) {
            *error = Text::tr("压缩包含有不允许的名称：%1").arg(name);
        }
    }
    if (!error->isEmpty()) {
        return std::nullopt;
    }
    const std::optional<QByteArray> content = readFile(zip, qint64(facts.uncompressed_size));
    if (!content) {
        *error = Text::tr("压缩包中的 %1 已损坏").arg(name);
        return std::nullopt;
    }
    return ArchiveFile{name, *content};
}

std::optional<ArchiveFiles> readFiles(void* zip, QString* error) {
    unz_global_info64 whole;
    if (unzGetGlobalInfo64(zip, &whole) != UNZ_OK || whole.number_entry > ZPOS64_T(mostArchiveFiles)) {
        *error = Text::tr("压缩包过大");
        return std::nullopt;
    }
    ArchiveFiles files;
    QSet<QString> names;
    qint64 total = 0;
    for (ZPOS64_T i = 0; i < whole.number_entry; ++i) {
        if ((i == 0 ? unzGoToFirstFile(zip) : unzGoToNextFile(zip)) != UNZ_OK) {
            *error = Text::tr("压缩包已损坏");
            return std::nullopt;
        }
        const std::optional<ArchiveFile> file = takeFile(zip, names, &total, error);
        if (!file) {
            return std::nullopt;
        }
        names.insert(file->name);
        files.append(*file);
    }
    return files;
}

}  // namespace

QByteArray packArchive(const ArchiveFiles& files, QString* error) {
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    zlib_filefunc64_def functions = functionsOf(&buffer);
    const zipFile zip = zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &functions);
    bool isWhole = zip != nullptr;
    for (const ArchiveFile& file : files) {
        isWhole = isWhole && addFile(zip, file);
    }
    isWhole = zip && zipClose(zip, nullptr) == ZIP_OK && isWhole;
    *error = isWhole ? QString() : Text::tr("压缩包无法写入");
    return isWhole ? buffer.data() : QByteArray();
}

std::optional<ArchiveFiles> unpackArchive(const QByteArray& bytes, QString* error) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    zlib_filefunc64_def functions = functionsOf(&buffer);
    const Unzip zip(unzOpen2_64("", &functions));
    if (!zip) {
        *error = Text::tr("这不是压缩包，或压缩包已损坏");
        return std::nullopt;
    }
    return readFiles(zip.get(), error);
}

}  // namespace app
