#include "benchmarks/support/Yardstick.h"

#include <cstddef>
#include <stdexcept>

namespace {

class StringWriter : public pugi::xml_writer {
public:
    void write(const void* bytes, std::size_t size) override {
        text_.append(static_cast<const char*>(bytes), size);
    }
    std::string take() { return std::move(text_); }

private:
    std::string text_;
};

class ElementCounter : public pugi::xml_tree_walker {
public:
    bool for_each(pugi::xml_node& node) override {
        count_ += node.type() == pugi::node_element ? 1 : 0;
        return true;
    }
    std::uint64_t count() const noexcept { return count_; }

private:
    std::uint64_t count_ = 0;
};

}  // namespace

void Yardstick::load(pugi::xml_document& document, std::span<const std::uint8_t> xml) {
    const pugi::xml_parse_result result = document.load_buffer(xml.data(), xml.size());
    if (!result) {
        throw std::runtime_error(result.description());
    }
}

std::string Yardstick::save(const pugi::xml_document& document) {
    StringWriter writer;
    document.save(writer);
    return writer.take();
}

std::uint64_t Yardstick::countElements(pugi::xml_document& document) {
    ElementCounter counter;
    document.traverse(counter);
    return counter.count();
}
