#include "app/model/tree/TypeName.h"

#include <QCoreApplication>

QString TypeName::of(PlistType type) {
    switch (type) {
        case PlistType::dictionary:
            return QCoreApplication::translate("TypeName", "Dictionary");
        case PlistType::array:
            return QCoreApplication::translate("TypeName", "Array");
        case PlistType::string:
            return QCoreApplication::translate("TypeName", "String");
        case PlistType::integer:
            return QCoreApplication::translate("TypeName", "Integer");
        case PlistType::real:
            return QCoreApplication::translate("TypeName", "Real");
        case PlistType::boolean:
            return QCoreApplication::translate("TypeName", "Boolean");
        case PlistType::date:
            return QCoreApplication::translate("TypeName", "Date");
        case PlistType::data:
            return QCoreApplication::translate("TypeName", "Data");
        case PlistType::uid:
            return QCoreApplication::translate("TypeName", "UID");
    }
    return {};
}
