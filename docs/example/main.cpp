#include <PlistCore/PlistCore.h>

#include <iostream>

using plist::PlistValue;

int main() {
    // A document is built, or comes from bytes in any of the three forms.
    const PlistValue harbour =
        PlistValue::dictionary({{"Name", "North Mole"}, {"Height", 27}, {"Lit", true}});
    const plist::PlistBytes binary = plist::PlistCodec::write(harbour, plist::PlistFormat::binary);

    const PlistValue root = plist::PlistCodec::read(binary.span()).root;
    for (const auto& [key, value] : root.entries()) {
        std::cout << key.view() << '\n';
    }
    std::cout << std::boolalpha << (root == harbour) << '\n';

    // What is no property list says why, and where.
    try {
        plist::PlistCodec::read("<plist><array><true/></dict></plist>");
    } catch (const plist::PlistError& error) {
        std::cout << error.errorDescription() << '\n';
    }
}
