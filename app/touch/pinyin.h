#pragma once

#include <QLibrary>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>

namespace app {

/// Chinese words for pinyin, from the library and the dictionary of Debian's libgooglepinyin0 (Apache 2.0),
/// which are looked for when this is made. One at a time in a process.
class Pinyin {
public:
    Pinyin();
    ~Pinyin();
    Pinyin(const Pinyin&) = delete;
    Pinyin& operator=(const Pinyin&) = delete;

    /// False: library or dictionary is missing, there are no words.
    [[nodiscard]] bool isReady() const { return isOpen_; }
    /// Words for what was typed so far, the likeliest one first.
    [[nodiscard]] QStringList words(const QString& typed, int most);
    /// Takes one of the words of the last call. True when all that was typed has become words: result() is
    /// the whole text. Else words(QString()) are those for the rest.
    bool choose(int word);
    [[nodiscard]] QString result() const { return result_; }
    void reset();

private:
    [[nodiscard]] QString word(std::size_t place) const;
    [[nodiscard]] QStringList listed(int most) const;

    using Open = bool (*)(const char*, const char*);
    using Close = void (*)();
    using Search = std::size_t (*)(const char*, std::size_t);
    using Candidate = std::uint16_t* (*)(std::size_t, std::uint16_t*, std::size_t);
    using Choose = std::size_t (*)(std::size_t);
    using Count = std::size_t (*)();
    using Starts = std::size_t (*)(const std::uint16_t*&);

    QLibrary library_;
    bool isOpen_ = false;
    std::size_t count_ = 0;
    QString result_;
    Close close_ = nullptr;
    Close flush_ = nullptr;
    Close reset_ = nullptr;
    Search search_ = nullptr;
    Candidate candidate_ = nullptr;
    Choose choose_ = nullptr;
    Count fixed_ = nullptr;
    Starts starts_ = nullptr;
};

}  // namespace app
