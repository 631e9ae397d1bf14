#include "fuzz/memoryfile.h"

#include <QDateTime>

#include <algorithm>
#include <cstring>
#include <utility>

namespace fuzz {

namespace {

/// One opened, or asked about.
class MemoryFile : public QAbstractFileEngine {
public:
    MemoryFile(const QString& name, const QByteArray& content, qint64 changed)
        : name_(name), content_(content), changed_(changed) {}

    bool open(QIODevice::OpenMode mode) override {
        const bool reads = !(mode & QIODevice::WriteOnly);
        if (!reads)
            setError(QFile::OpenError, QStringLiteral("Permission denied"));
        return reads;
    }
    bool close() override { return true; }
    qint64 size() const override { return content_.size(); }
    qint64 pos() const override { return pos_; }
    bool seek(qint64 pos) override {
        pos_ = int(pos);
        return true;
    }
    qint64 read(char* data, qint64 most) override {
        const int length = std::min(int(most), content_.size() - pos_);
        std::memcpy(data, content_.constData() + pos_, std::size_t(length));
        pos_ += length;
        return length;
    }
    bool isRelativePath() const override { return !name_.startsWith(QLatin1Char('/')); }
    FileFlags fileFlags(FileFlags asked) const override {
        return asked & (ReadOwnerPerm | ReadUserPerm | FileType | ExistsFlag);
    }
    QString fileName(FileName) const override { return name_; }
    QDateTime fileTime(FileTime) const override { return QDateTime::fromMSecsSinceEpoch(changed_, Qt::UTC); }

private:
    QString name_;
    QByteArray content_;
    qint64 changed_;
    int pos_ = 0;
};

}  // namespace

void MemoryFiles::put(const QString& name, const QByteArray& content) {
    contents_.insert(name, content);
    ++changes_;
}

QHash<QString, QByteArray> MemoryFiles::takeAll() {
    return std::exchange(contents_, {});
}

QAbstractFileEngine* MemoryFiles::create(const QString& fileName) const {
    const auto found = contents_.constFind(fileName);
    return found == contents_.constEnd() ? nullptr : new MemoryFile(fileName, *found, changes_);
}

}  // namespace fuzz
