#include "app/desktop/pasteboard/PasteboardData.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "app/model/runtime/Plist.h"

namespace {

using Representation = PlistTransfer::Representation;

struct Form {
    QString type;
    Representation representation;
};

/// What is offered, in this order.
std::array<Form, 4> offeredForms() {
    return {{{PlistTransfer::nodesContentType(), Representation::nodes},
             {QStringLiteral("application/x-plist"), Representation::xml},
             {QStringLiteral("text/plain;charset=utf-8"), Representation::text},
             {QStringLiteral("text/plain"), Representation::text}}};
}

/// What is understood, in this order: property lists by all of their names too.
std::array<Form, 6> acceptedForms() {
    return {{{PlistTransfer::nodesContentType(), Representation::nodes},
             {QStringLiteral("application/x-plist"), Representation::xml},
             {QStringLiteral("application/x-plist+xml"), Representation::xml},
             {QStringLiteral("application/x-bplist"), Representation::xml},
             {QStringLiteral("text/plain;charset=utf-8"), Representation::text},
             {QStringLiteral("text/plain"), Representation::text}}};
}

std::optional<Form> formIn(const QMimeData& data) {
    for (const Form& form : acceptedForms()) {
        if (data.hasFormat(form.type)) {
            return form;
        }
    }
    return std::nullopt;
}

}  // namespace

PasteboardData::PasteboardData(PlistTransfer transfer) : transfer_(std::move(transfer)) {}

bool PasteboardData::hasTransfer(const QMimeData& data) {
    return formIn(data).has_value();
}

PlistTransfer PasteboardData::transferFrom(const QMimeData& data) {
    if (const auto* own = qobject_cast<const PasteboardData*>(&data)) {
        // Still in this process: there is nothing to decode.
        return own->transfer_;
    }
    const std::optional<Form> form = formIn(data);
    return form ? PlistTransfer::imported(form->representation, data.data(form->type))
                : PlistTransfer();
}

QStringList PasteboardData::formats() const {
    QStringList types;
    for (const Form& form : offeredForms()) {
        types += form.type;
    }
    return types;
}

bool PasteboardData::hasFormat(const QString& type) const {
    return formats().contains(type);
}

QVariant PasteboardData::retrieveData(const QString& type, QMetaType preferred) const {
    const auto forms = offeredForms();
    const auto* const form = std::ranges::find(forms, type, &Form::type);
    if (form == forms.end()) {
        return {};
    }
    try {
        const QByteArray bytes = transfer_.exported(form->representation);
        return preferred.id() == QMetaType::QString ? QVariant(QString::fromUtf8(bytes))
                                                    : QVariant(bytes);
    } catch (const PlistError&) {
        // Too much to be written. Whoever asked gets nothing, as the clipboard has no errors.
        return {};
    }
}
