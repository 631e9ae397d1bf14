#include "runner/problem.h"

#include "json/jsonfile.h"
#include "workcell/commandline.h"

namespace run {

QString Problem::text() const {
    QString where = file;
    if (place.line > 0) {
        where += QStringLiteral(":%1:%2").arg(place.line).arg(place.column);
    }
    return (where.isEmpty() ? reason : where + QStringLiteral(": ") + reason).simplified();
}

std::optional<InputArray> InputArray::read(const QString& file, const QString& shown, Problem* problem) {
    mendo::FileProblem found;
    const std::optional<mendo::JsonText> text =
        mendo::readJsonFile(file, &found, mendo::JsonText::Reading::ByElement);
    *problem = {shown, found.place, found.text()};
    return text ? from(*text, shown, problem) : std::nullopt;
}

std::optional<InputArray> InputArray::parse(const QByteArray& text, const QString& shown, Problem* problem) {
    mendo::FileProblem found;
    const std::optional<mendo::JsonText> json =
        mendo::JsonText::parse(text, &found, mendo::JsonText::Reading::ByElement);
    *problem = {shown, found.place, found.text()};
    return json ? from(*json, shown, problem) : std::nullopt;
}

std::optional<InputArray> InputArray::from(const mendo::JsonText& text, const QString& shown,
                                           Problem* problem) {
    if (text.isArray()) {
        return InputArray(text, shown);
    }
    *problem = {shown, text.place(), mendo::FileProblem::Reason{mendo::FileProblem::Kind::NoArray}.text()};
    return std::nullopt;
}

mendo::TextPlace InputArray::place(int element, const QString& path) const {
    return path.isEmpty() ? text_.place(element) : text_.place(element, path);
}

Problem InputArray::problemAt(int element, const QString& path, const QString& reason) const {
    return {shown_, place(element, path), reason};
}

void printError(const QString& text) {
    workcell::printError("lumo-run", text);
}

void printWarning(const QString& text) {
    printError(QStringLiteral("warning: ") + text);
}

}  // namespace run
