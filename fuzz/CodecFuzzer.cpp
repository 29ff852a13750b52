#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "PlistCore/PlistCodec.h"
#include "PlistCore/PlistError.h"
#include "fuzz/support/FuzzCheck.h"
#include "fuzz/support/ValueFacts.h"

namespace plist::detail {

namespace {

std::optional<PlistFile> read(std::span<const std::uint8_t> bytes) {
    try {
        return PlistCodec::read(bytes);
    } catch (const PlistError& error) {
        fuzzCheck(!error.errorDescription().empty());
        return std::nullopt;
    }
}

/// What is written in a form is recognised as that form.
void checkForm(const PlistValue& value, PlistFormat format) {
    const PlistBytes bytes = PlistCodec::write(value, format);
    fuzzCheck(PlistCodec::read(bytes.span()).format == format);
}

bool refusesToWrite(const PlistFile& file) {
    try {
        PlistCodec::write(file.root, PlistFormat::openStep);
        return false;
    } catch (const PlistError&) {
        return true;
    }
}

void checkWriting(const PlistFile& file) {
    const ValueFacts facts = factsOf(file.root);
    // A uid is written to XML as a dictionary, one level deeper.
    if (facts.isHuge || facts.holdsFarDate || facts.depth >= 512) {
        return;
    }
    checkForm(file.root, PlistFormat::xml);
    checkForm(file.root, PlistFormat::binary);
    fuzzCheck(refusesToWrite(file));
}

}  // namespace

/// Any bytes at all, as from a file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (const std::optional<PlistFile> file = read({data, size})) {
        checkWriting(*file);
    }
    return 0;
}

}  // namespace plist::detail
