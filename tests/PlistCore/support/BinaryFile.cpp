#include "tests/PlistCore/support/BinaryFile.h"

#include <stdexcept>
#include <utility>

namespace {

unsigned hexadecimalDigit(char digit) {
    if (digit >= '0' && digit <= '9') {
        return static_cast<unsigned>(digit - '0');
    }
    if (digit >= 'A' && digit <= 'F') {
        return static_cast<unsigned>(digit - 'A') + 10;
    }
    throw std::invalid_argument("no hexadecimal digit in a picture of bytes");
}

}  // namespace

std::vector<std::uint8_t> bytesOf(std::string_view picture) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < picture.size(); ++i) {
        if (picture[i] == ' ') {
            continue;
        }
        if (picture[i] == '\'') {
            const std::size_t end = picture.find('\'', i + 1);
            bytes.insert(bytes.end(), picture.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                         picture.begin() + static_cast<std::ptrdiff_t>(end));
            i = end;
            continue;
        }
        const unsigned high = hexadecimalDigit(picture[i++]);
        bytes.push_back(static_cast<std::uint8_t>(high << 4 | hexadecimalDigit(picture.at(i))));
    }
    return bytes;
}

std::vector<std::uint8_t> bigEndian(std::uint64_t number, unsigned width) {
    std::vector<std::uint8_t> bytes(width);
    for (unsigned i = width; i > 0; --i) {
        bytes[i - 1] = static_cast<std::uint8_t>(number);
        number >>= 8;
    }
    return bytes;
}

void append(std::vector<std::uint8_t>& target, std::span<const std::uint8_t> bytes) {
    target.insert(target.end(), bytes.begin(), bytes.end());
}

BinaryFile BinaryFile::of(std::initializer_list<std::string_view> pictures) {
    BinaryFile file;
    for (const std::string_view picture : pictures) {
        file.add(bytesOf(picture));
    }
    return file;
}

std::size_t BinaryFile::add(std::vector<std::uint8_t> object) {
    objects.push_back(std::move(object));
    return objects.size() - 1;
}

std::uint64_t BinaryFile::offsetOf(std::size_t number) const {
    std::uint64_t offset = 8;
    for (std::size_t i = 0; i < number; ++i) {
        offset += objects[i].size();
    }
    return offset;
}

std::vector<std::uint8_t> BinaryFile::bytes() const {
    std::vector<std::uint8_t> file = bytesOf("'bplist00'");
    for (const std::vector<std::uint8_t>& object : objects) {
        append(file, object);
    }
    const std::uint64_t tableStart = file.size();
    std::uint64_t offset = 8;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const auto wrong = wrongOffsets.find(i);
        append(file, bigEndian(wrong == wrongOffsets.end() ? offset : wrong->second, offsetSize));
        offset += objects[i].size();
    }
    append(file, bigEndian(0, 6));
    append(file, bigEndian(claimedOffsetSize.value_or(offsetSize), 1));
    append(file, bigEndian(claimedReferenceSize.value_or(referenceSize), 1));
    append(file, bigEndian(claimedObjectCount.value_or(objects.size()), 8));
    append(file, bigEndian(root, 8));
    append(file, bigEndian(claimedOffsetTableStart.value_or(tableStart), 8));
    return file;
}
