#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <span>
#include <string>

/// What the library is measured against: a good general XML parser, used as its manual shows, on
/// the same bytes. Each throws `std::runtime_error` if it fails.
namespace Yardstick {

/// Reads with the default options.
void load(pugi::xml_document& document, std::span<const std::uint8_t> xml);

/// Writes with the default options into a string.
std::string save(const pugi::xml_document& document);

/// The number of elements, to be compared with `Census::elements`.
std::uint64_t countElements(pugi::xml_document& document);

}  // namespace Yardstick
