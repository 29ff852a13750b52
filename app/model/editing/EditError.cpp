#include "app/model/editing/EditError.h"

#include <QCoreApplication>
#include <string_view>

QString EditError::message() const {
    if (const auto* duplicate = std::get_if<DuplicateKey>(&reason_)) {
        const std::string_view key = duplicate->key.view();
        return QCoreApplication::translate("EditError", "The key “%1” already exists.")
            .arg(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())));
    }
    return QCoreApplication::translate("EditError",
                                       "The root cannot be renamed, moved or deleted.");
}
