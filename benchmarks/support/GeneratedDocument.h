#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "benchmarks/support/Census.h"

/// The shapes of documents that are measured.
enum class DocumentKind : std::uint8_t {
    records,  ///< an array of dictionaries with the same keys
    nested,   ///< dictionaries and arrays inside each other, up to 30 deep, with ever other keys
    strings,  ///< a localisation: keys and texts, some of them not ASCII
    archive,  ///< a keyed archive: one flat list of objects that refer to each other by uid
    blobs,    ///< data of 1 to 64 KiB
};

inline constexpr std::array<DocumentKind, 5> allDocumentKinds = {
    DocumentKind::records, DocumentKind::nested, DocumentKind::strings,
    DocumentKind::archive, DocumentKind::blobs,
};

std::string_view nameOf(DocumentKind kind);
std::optional<DocumentKind> documentKindNamed(std::string_view name);

/// A generated document and what it holds.
struct GeneratedDocument {
    std::string xml;
    Census census;
};

/// The document of this kind whose XML form has `bytes` bytes or slightly more. The same arguments
/// always give the same bytes.
GeneratedDocument generateDocument(DocumentKind kind, std::size_t bytes);

/// Reads the document. Throws `std::logic_error` if the value does not hold what was generated, if
/// writing it does not give the same bytes again, or if its binary form does not read as an equal
/// value: a benchmark that measures something wrong must not run.
plist::PlistValue checkedValue(const GeneratedDocument& document);
