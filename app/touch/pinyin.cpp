#include "app/touch/pinyin.h"

#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QStandardPaths>

#include <algorithm>

namespace app {

namespace {

constexpr int version = 0;
constexpr std::size_t longest = 64;  ///< letters of a word

template <typename Function>
bool find(QLibrary& library, const char* name, Function* function) {
    *function = reinterpret_cast<Function>(library.resolve(name));
    return *function;
}

}  // namespace

Pinyin::Pinyin() : library_(QStringLiteral("googlepinyin"), version) {
    const QString words = QLibraryInfo::location(QLibraryInfo::LibrariesPath) +
                          QStringLiteral("/googlepinyin/data/dict_pinyin.dat");
    Open open = nullptr;
    if (!QFile::exists(words) || !library_.load() || !find(library_, "im_open_decoder", &open) ||
        !find(library_, "im_close_decoder", &close_) || !find(library_, "im_flush_cache", &flush_) ||
        !find(library_, "im_reset_search", &reset_) || !find(library_, "im_search", &search_) ||
        !find(library_, "im_get_candidate", &candidate_) || !find(library_, "im_choose", &choose_) ||
        !find(library_, "im_get_fixed_len", &fixed_) || !find(library_, "im_get_spl_start_pos", &starts_)) {
        return;
    }
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(folder);
    const QString learnt = folder + QStringLiteral("/pinyin.dat");
    isOpen_ = open(QFile::encodeName(words).constData(), QFile::encodeName(learnt).constData());
}

Pinyin::~Pinyin() {
    if (isOpen_) {
        flush_();
        close_();
    }
}

QString Pinyin::word(std::size_t place) const {
    std::uint16_t letters[longest] = {};
    return candidate_(place, letters, longest) ? QString::fromUtf16(letters) : QString();
}

QStringList Pinyin::listed(int most) const {
    QStringList words;
    const auto count = std::min(count_, static_cast<std::size_t>(most));
    for (std::size_t place = 0; place < count; ++place) {
        words << word(place);
    }
    return words;
}

QStringList Pinyin::words(const QString& typed, int most) {
    if (!isOpen_) {
        return {};
    }
    if (!typed.isEmpty()) {
        result_.clear();
        const QByteArray letters = typed.toLatin1();
        count_ = search_(letters.constData(), static_cast<std::size_t>(letters.size()));
    }
    return listed(most);
}

/// The first word is then the whole: what was chosen, and the likeliest for the rest.
bool Pinyin::choose(int place) {
    if (!isOpen_) {
        return false;
    }
    count_ = choose_(static_cast<std::size_t>(place));
    const std::uint16_t* starts = nullptr;
    const std::size_t syllables = starts_(starts);
    const bool whole = fixed_() >= syllables;
    result_ = whole ? word(0) : QString();
    return whole;
}

void Pinyin::reset() {
    if (isOpen_) {
        reset_();
        count_ = 0;
    }
    result_.clear();
}

}  // namespace app
