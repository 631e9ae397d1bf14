#include "flight/posturerecord.h"

#include "mendo/moduleobject.h"
#include "program/words.h"

#include <cstring>

namespace flight {

namespace {

constexpr int lists = 3;

std::vector<double> numbersOf(const mendo::ModuleObject* list) {
    std::vector<double> numbers;
    numbers.reserve(std::size_t(list->cmobjCount()));
    for (int i = 0; i < list->cmobjCount(); ++i) {
        numbers.push_back(list->c(i)->getDouble());
    }
    return numbers;
}

}  // namespace

Posture Posture::of(const mendo::ModuleObject* node) {
    return {numbersOf(node->c(prog::field::trans)), numbersOf(node->c(prog::field::rot)),
            numbersOf(node->c(prog::field::near))};
}

QByteArray Posture::encoded() const {
    QByteArray bytes;
    for (const std::vector<double>* list : {&trans, &rot, &near}) {
        bytes.append(char(list->size()));
    }
    for (const std::vector<double>* list : {&trans, &rot, &near}) {
        bytes.append(reinterpret_cast<const char*>(list->data()), int(list->size() * sizeof(double)));
    }
    return bytes;
}

Posture Posture::decoded(const QByteArray& bytes) {
    Posture posture;
    std::vector<double>* const all[lists] = {&posture.trans, &posture.rot, &posture.near};
    std::size_t at = lists;
    for (int i = 0; i < lists && bytes.size() >= lists; ++i) {
        const auto count = std::size_t(quint8(bytes[i]));
        if (at + count * sizeof(double) > std::size_t(bytes.size())) {
            return {};
        }
        all[i]->resize(count);
        std::memcpy(all[i]->data(), bytes.constData() + at, count * sizeof(double));
        at += count * sizeof(double);
    }
    return posture;
}

}  // namespace flight
