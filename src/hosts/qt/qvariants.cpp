#include "hosts/qt/qvariants.h"

#include "qvgraph/fault.h"
#include "qvgraph/system_color.h"

#include <QtCore/QStringList>
#include <QtCore/QVariantList>

namespace qv::qt {
namespace {

QStringList string_list(TextList const& texts) {
    QStringList list;
    for (std::string const& text : texts) list.append(QString::fromStdString(text));
    return list;
}

TextList text_list(QStringList const& list) {
    TextList texts;
    for (QString const& text : list) texts.push_back(text.toStdString());
    return texts;
}

QVariantList number_list(NumberList const& numbers) {
    return {numbers.begin(), numbers.end()};
}

/// A list of one kind throughout: of texts, else of numbers.
Variant list_of(QVariantList const& list) {
    bool const holds_texts = !list.isEmpty() && list.front().typeId() == QMetaType::QString;
    if (holds_texts) return text_list(QVariant(list).toStringList());
    NumberList numbers;
    for (QVariant const& element : list) {
        bool is_number = false;
        numbers.push_back(element.toDouble(&is_number));
        if (!is_number) raise_fault(FaultNumber::TypeMismatch);
    }
    return numbers;
}

} // namespace

QVariant to_qvariant(Variant const& value) {
    return std::visit(
        [](auto const& held) -> QVariant {
            using Held = std::remove_cvref_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::monostate>)
                return {};
            else if constexpr (std::is_same_v<Held, bool>)
                return held;
            else if constexpr (std::is_integral_v<Held>)
                return static_cast<int>(held);
            else if constexpr (std::is_floating_point_v<Held>)
                return static_cast<double>(held);
            else if constexpr (std::is_same_v<Held, TextList>)
                return string_list(held);
            else if constexpr (std::is_same_v<Held, NumberList>)
                return number_list(held);
            else
                return QString::fromStdString(held);
        },
        static_cast<Variant::variant const&>(value));
}

Variant from_qvariant(QVariant const& value) {
    switch (value.typeId()) {
    case QMetaType::UnknownType: return {};
    case QMetaType::Bool: return value.toBool();
    case QMetaType::Int:
    case QMetaType::Short: return static_cast<std::int32_t>(value.toInt());
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double: return value.toDouble();
    case QMetaType::QString: return value.toString().toStdString();
    case QMetaType::QStringList: return text_list(value.toStringList());
    case QMetaType::QVariantList: return list_of(value.toList());
    case QMetaType::QColor: return Variant(from_qcolor(value.value<QColor>()));
    default: raise_fault(FaultNumber::TypeMismatch);
    }
}

QColor to_qcolor(Color color) {
    Color const plain = plain_color(color);
    return {plain & 0xFF, plain >> 8 & 0xFF, plain >> 16 & 0xFF};
}

Color from_qcolor(QColor const& color) {
    return rgb(color.red(), color.green(), color.blue());
}

} // namespace qv::qt
