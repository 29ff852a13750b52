#pragma once

#include <QMimeData>
#include <QStringList>
#include <QVariant>

#include "app/model/actions/PlistTransfer.h"

/// Copied or dragged items as other programs see them. They are encoded only when somebody asks for
/// the bytes, so that copying costs nothing until something is pasted.
///
/// The forms, best first: the application's own, an XML property list, and the same as text, twice:
/// terminals and old toolkits ask for "text/plain" only.
class PasteboardData : public QMimeData {
    Q_OBJECT

public:
    explicit PasteboardData(PlistTransfer transfer);

    /// Whether `data`, from whatever program, may hold items. Text may turn out to be none.
    static bool hasTransfer(const QMimeData& data);

    /// The items in the best form that `data` has; none if it has no form that is understood.
    /// Throws `TransferError` or `PlistError` if they cannot be read.
    static PlistTransfer transferFrom(const QMimeData& data);

    bool hasFormat(const QString& type) const override;
    QStringList formats() const override;

protected:
    QVariant retrieveData(const QString& type, QMetaType preferred) const override;

private:
    PlistTransfer transfer_;
};
