#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/NodeId.h"

/// What travels when rows are copied, cut or dragged. A plain value without nodes, so it may be
/// exported on any thread and long after the document is gone.
struct PlistTransfer {
    /// The forms in which a transfer can be handed over.
    enum class Representation : std::uint8_t {
        nodes,  ///< the application's own form, the only one that knows the source nodes
        xml,    ///< a property list in XML; any form of property list is read
        text,   ///< the same as text
    };

    /// All forms, the one to prefer first.
    static constexpr std::array<Representation, 3> representations = {
        Representation::nodes, Representation::xml, Representation::text};

    /// The type under which the application's own form is offered: "com.ventrel.tabulet.nodes".
    static QString nodesContentType();

    /// The copied items; an item that comes out of an array has an empty key.
    std::vector<PlistEntry> entries;

    /// The nodes that the entries were copied from, in the same order; empty when they come from
    /// elsewhere. They mean something only to the process that gave them out.
    std::vector<NodeId> sourceIDs;

    /// The transfer in one of its forms. Throws `PlistError` if it cannot be written: the items
    /// describe more values than a file may.
    QByteArray exported(Representation representation) const;

    /// The transfer that was exported to these bytes. Items in XML or text come without source
    /// nodes: the elements of an array without keys, the entries of a dictionary, or any other
    /// value as a single item.
    ///
    /// Throws `TransferError` for bytes in the application's own form that do not hold together,
    /// and `PlistError` for a property list, theirs included, that cannot be read.
    static PlistTransfer imported(Representation representation, const QByteArray& bytes);

    /// The items as one value: a dictionary if any of them has a key, else a single item by
    /// itself, else an array.
    PlistValue value() const;

    /// Lets go of the memory of the documents that the entries come from, where they are small
    /// parts of them (`PlistCopy::detached`). For transfers that wait on the clipboard.
    void detach();
};

/// Dragged or pasted items of the application's own type that cannot be understood.
class TransferError : public std::exception {
public:
    TransferError();

    /// One sentence for people: "Invalid dragged items."
    const QString& message() const noexcept { return message_; }

    /// The message in UTF-8; valid while this error lives.
    const char* what() const noexcept override { return what_.c_str(); }

private:
    QString message_;
    std::string what_;
};
