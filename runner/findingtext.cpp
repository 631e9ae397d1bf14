#include "runner/findingtext.h"

namespace run {

using prog::FieldKind;
using prog::Rule;

namespace {

QString kindText(FieldKind kind, const QVariant& found) {
    switch (kind) {
        case FieldKind::Text:
            return QStringLiteral("is no text");
        case FieldKind::Flag:
            return QStringLiteral("is neither true nor false");
        case FieldKind::State:
            return QStringLiteral("is neither \"true\" nor \"false\"");
        case FieldKind::Map:
            return QStringLiteral("is no object");
        case FieldKind::Coordinates:
        case FieldKind::Joints:
            if (!found.isValid()) {
                return QStringLiteral("is no list of coordinates");
            }
            break;
        default:
            break;
    }
    if (found.userType() == QMetaType::QString) {
        return QStringLiteral("is the text \"%1\" where a number is usual").arg(found.toString());
    }
    return QStringLiteral("is no number");
}

}  // namespace

QString findingText(const prog::Finding& finding) {
    const QVariantList& arguments = finding.arguments;
    switch (finding.rule) {
        case Rule::TypeMissing:
            return QStringLiteral("statement without a type");
        case Rule::TypeIsNoText:
            return QStringLiteral("the statement's type is no text");
        case Rule::TypeIsEmpty:
            return QStringLiteral("the statement's type is empty");
        case Rule::TypeUnknown:
            return QStringLiteral("unknown statement type \"%1\"").arg(arguments.value(0).toString());
        case Rule::FieldMissing:
            return QStringLiteral("is missing");
        case Rule::FieldKind:
            return kindText(static_cast<FieldKind>(arguments.value(0).toInt()), arguments.value(1));
        case Rule::NoSuchSet:
            return QStringLiteral("names no parameter set (%1 of %2)")
                .arg(arguments.value(0).toInt())
                .arg(arguments.value(1).toInt());
    }
    return {};
}

}  // namespace run
