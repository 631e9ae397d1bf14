#include "workcell/vcdwriter.h"

#include "json/jsonwriter.h"

#include <algorithm>

namespace workcell {

namespace {

constexpr int integerBits = 32;

/// A short code of printable characters.
QByteArray code(int signal) {
    constexpr int first = '!';
    constexpr int count = '~' - '!' + 1;
    QByteArray text;
    do {
        text += char(first + signal % count);
        signal /= count;
    } while (signal > 0);
    return text;
}

QByteArray identifier(const QString& name) {
    QByteArray text;
    for (const char c : name.toUtf8()) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        text += plain ? c : '_';
    }
    return text;
}

QByteArray typeText(VcdWriter::Kind kind) {
    switch (kind) {
        case VcdWriter::Kind::Wire:
            return "wire 1";
        case VcdWriter::Kind::Integer:
            return "integer " + QByteArray::number(integerBits);
        case VcdWriter::Kind::Real:
            break;
    }
    return "real 64";
}

}  // namespace

bool VcdWriter::open(const QString& file, QString* error) {
    file_.setFileName(file);
    if (!file_.open(QIODevice::WriteOnly)) {
        *error = file_.errorString();
        return false;
    }
    out_ = &file_;
    return true;
}

int VcdWriter::declare(const QString& scope, const QString& name, Kind kind) {
    signals_.push_back({kind});
    const int signal = int(signals_.size()) - 1;
    names_.push_back({scope, name, signal});
    return signal;
}

void VcdWriter::alias(const QString& scope, const QString& name, int signal) {
    names_.push_back({scope, name, signal});
}

void VcdWriter::declareNames() {
    std::stable_sort(names_.begin(), names_.end(),
                     [](const Name& a, const Name& b) { return a.scope < b.scope; });
    QString scope;
    for (const Name& name : names_) {
        if (name.scope != scope) {
            write(scope.isEmpty() ? QByteArray() : QByteArray("$upscope $end\n"));
            scope = name.scope;
            write("$scope module " + identifier(scope) + " $end\n");
        }
        write("$var " + typeText(signals_[std::size_t(name.signal)].kind) + ' ' + code(name.signal) + ' ' +
              identifier(name.name) + " $end\n");
    }
    write(scope.isEmpty() ? QByteArray() : QByteArray("$upscope $end\n"));
}

void VcdWriter::begin() {
    begun_ = true;
    write("$version lumo $end\n$timescale 1 ms $end\n");
    declareNames();
    write("$enddefinitions $end\n#0\n$dumpvars\n");
    for (int i = 0; i < int(signals_.size()); ++i) {
        writeValue(i);
    }
    write("$end\n");
}

void VcdWriter::set(int signal, double value, qint64 atMs) {
    Signal& s = signals_[std::size_t(signal)];
    if (s.value == value) {
        return;
    }
    s.value = value;
    if (!begun_) {
        return;
    }
    writeTime(atMs);
    writeValue(signal);
}

void VcdWriter::writeValue(int signal) {
    const Signal& s = signals_[std::size_t(signal)];
    if (s.kind == Kind::Wire) {
        write((s.value != 0 ? '1' : '0') + code(signal) + '\n');
    } else if (s.kind == Kind::Real) {
        write('r' + mendo::numberText(s.value) + ' ' + code(signal) + '\n');
    } else {
        const auto bits = quint32(qint32(s.value));
        write('b' + QByteArray::number(bits, 2) + ' ' + code(signal) + '\n');
    }
}

void VcdWriter::writeTime(qint64 atMs) {
    if (atMs <= timeMs_) {
        return;
    }
    timeMs_ = atMs;
    write('#' + QByteArray::number(atMs) + '\n');
}

void VcdWriter::write(const QByteArray& text) {
    if (out_) {
        failed_ |= out_->write(text) != text.size();
    }
}

bool VcdWriter::close(qint64 atMs, QString* error) {
    if (!out_) {
        return true;
    }
    writeTime(atMs);
    if (file_.isOpen()) {
        failed_ |= !file_.flush();
    }
    if (failed_) {
        *error = out_->errorString();
    }
    file_.close();
    out_ = nullptr;
    return !failed_;
}

}  // namespace workcell
