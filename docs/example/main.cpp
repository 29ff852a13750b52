#include <PlistCore/PlistCore.h>

#include <cstddef>
#include <iostream>
#include <string_view>

using plist::PlistValue;

int main() {
    // A document comes from bytes in any of the three forms, or is built.
    const PlistValue harbour = PlistValue::dictionary({
        {"Name", PlistValue::string("North Mole")},
        {"Height", PlistValue::integer(27)},
        {"Lit", PlistValue::boolean(true)},
    });
    const plist::PlistBytes binary = plist::PlistCodec::write(harbour, plist::PlistFormat::binary);

    const plist::PlistFile file = plist::PlistCodec::read(binary.span());
    for (std::size_t i = 0; i < file.root.childCount(); ++i) {
        std::cout << file.root.keys()[i].view() << '\n';
    }
    std::cout << std::boolalpha << (file.root == harbour) << '\n';

    // What is no property list says why, and where.
    try {
        plist::PlistCodec::read(std::string_view("<plist><array><true/></dict></plist>"));
    } catch (const plist::PlistError& error) {
        std::cout << error.errorDescription() << '\n';
    }
}
