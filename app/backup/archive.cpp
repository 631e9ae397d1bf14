#include "app/backup/archive.h"

#include <QCoreApplication>
#include <QSet>

#include <sys/stat.h>
#include <zip.h>
#include <memory>

namespace app {

namespace {

/// The context of the texts.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(app::Archive)
};

using Zip = std::unique_ptr<zip_t, decltype(&zip_discard)>;

/// A source of bytes that ends with its archive, and stays readable when it is kept before.
struct SourceFree {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Source = std::unique_ptr<zip_source_t, SourceFree>;

QString textOf(zip_error_t* error) {
    const QString text = QString::fromUtf8(zip_error_strerror(error));
    zip_error_fini(error);
    return text;
}

bool addFile(zip_t* zip, const ArchiveFile& file) {
    zip_source_t* const source =
        zip_source_buffer(zip, file.content.constData(), zip_uint64_t(file.content.size()), 0);
    if (!source) {
        return false;
    }
    if (zip_file_add(zip, file.name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8) < 0) {
        zip_source_free(source);
        return false;
    }
    return true;
}

QByteArray readAll(zip_source_t* source) {
    zip_stat_t facts;
    if (zip_source_stat(source, &facts) != 0 || zip_source_open(source) != 0) {
        return {};
    }
    QByteArray bytes(int(facts.size), Qt::Uninitialized);
    const bool isWhole = zip_source_read(source, bytes.data(), facts.size) == zip_int64_t(facts.size);
    zip_source_close(source);
    return isWhole ? bytes : QByteArray();
}

bool isPlainName(const QString& name) {
    return !name.isEmpty() && !name.startsWith(QLatin1Char('.')) && !name.contains(QLatin1Char('/')) &&
           !name.contains(QLatin1Char('\\')) && !name.contains(QChar(0)) && name.toUtf8().size() < 256;
}

bool isLink(zip_t* zip, zip_uint64_t index) {
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    constexpr int modeShift = 16;
    return zip_file_get_external_attributes(zip, index, 0, &system, &attributes) == 0 &&
           system == ZIP_OPSYS_UNIX && S_ISLNK(attributes >> modeShift);
}

/// Reads one file. Nothing when it is damaged.
std::optional<QByteArray> readFile(zip_t* zip, zip_uint64_t index, qint64 size) {
    const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(zip_fopen_index(zip, index, 0), zip_fclose);
    QByteArray bytes(int(size), Qt::Uninitialized);
    char beyond = 0;
    // The last read meets the end, and with it the checksum.
    if (!file || zip_fread(file.get(), bytes.data(), zip_uint64_t(size)) != size ||
        zip_fread(file.get(), &beyond, 1) != 0) {
        return std::nullopt;
    }
    return bytes;
}

/// What is wrong with an entry, before it is read; empty for a good one.
QString faultOf(zip_t* zip, zip_uint64_t index, const zip_stat_t& facts, const QString& name) {
    constexpr zip_uint64_t needed = ZIP_STAT_NAME | ZIP_STAT_SIZE;
    if ((facts.valid & needed) != needed) {
        return Text::tr("压缩包已损坏");
    }
    if (!isPlainName(name) || isLink(zip, index)) {
        return Text::tr("压缩包含有不允许的名称：%1").arg(name);
    }
    if ((facts.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && facts.encryption_method != ZIP_EM_NONE) {
        return Text::tr("压缩包已加密");
    }
    return facts.size > zip_uint64_t(mostFileBytes) ? Text::tr("压缩包过大") : QString();
}

std::optional<ArchiveFiles> readFiles(zip_t* zip, QString* error) {
    ArchiveFiles files;
    QSet<QString> names;
    qint64 total = 0;
    const zip_int64_t count = zip_get_num_entries(zip, 0);
    if (count < 0 || count > mostArchiveFiles) {
        *error = Text::tr("压缩包过大");
        return std::nullopt;
    }
    for (zip_uint64_t i = 0; i < zip_uint64_t(count); ++i) {
        zip_stat_t facts;
        if (zip_stat_index(zip, i, 0, &facts) != 0) {
            *error = Text::tr("压缩包已损坏");
            return std::nullopt;
        }
        const QString name = QString::fromUtf8(facts.name);
        *error = faultOf(zip, i, facts, name);
        total += error->isEmpty() ? qint64(facts.size) : 0;
        if (error->isEmpty() && total > mostArchiveBytes) {
            *error = Text::tr("压缩包过大");
        }
        if (error->isEmpty() && names.contains(name)) {
            *error = Text::tr("压缩包含有不允许的名称：%1").arg(name);
        }
        if (!error->isEmpty()) {
            return std::nullopt;
        }
        const std::optional<QByteArray> content = readFile(zip, i, qint64(facts.size));
        if (!content) {
            *error = Text::tr("压缩包中的 %1 已损坏").arg(name);
            return std::nullopt;
        }
        names.insert(name);
        files.append({name, *content});
    }
    return files;
}

}  // namespace

QByteArray packArchive(const ArchiveFiles& files, QString* error) {
    zip_error_t fault;
    zip_error_init(&fault);
    const Source source(zip_source_buffer_create(nullptr, 0, 0, &fault));
    Zip zip(source ? zip_open_from_source(source.get(), ZIP_TRUNCATE, &fault) : nullptr, zip_discard);
    if (!zip) {
        *error = textOf(&fault);
        return {};
    }
    zip_source_keep(source.get());  // the archive ends one use of it, this function the other
    for (const ArchiveFile& file : files) {
        if (!addFile(zip.get(), file)) {
            *error = QString::fromUtf8(zip_strerror(zip.get()));
            return {};
        }
    }
    if (zip_close(zip.get()) != 0) {
        *error = QString::fromUtf8(zip_strerror(zip.get()));
        return {};
    }
    (void)zip.release();  // closed
    const QByteArray bytes = readAll(source.get());
    *error = bytes.isEmpty() ? Text::tr("压缩包已损坏") : QString();
    return bytes;
}

std::optional<ArchiveFiles> unpackArchive(const QByteArray& bytes, QString* error) {
    zip_error_t fault;
    zip_error_init(&fault);
    zip_source_t* const source =
        zip_source_buffer_create(bytes.constData(), zip_uint64_t(bytes.size()), 0, &fault);
    const Zip zip(source ? zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &fault) : nullptr,
                  zip_discard);
    if (!zip) {
        zip_source_free(source);
        *error = Text::tr("这不是压缩包，或压缩包已损坏");
        zip_error_fini(&fault);
        return std::nullopt;
    }
    return readFiles(zip.get(), error);
}

}  // namespace app
