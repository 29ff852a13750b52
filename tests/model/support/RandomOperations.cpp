#include "tests/model/support/RandomOperations.h"

#include <algorithm>
#include <random>

namespace {

using Kind = RandomOperation::Kind;

struct Weight {
    Kind kind;
    unsigned weight;
};

constexpr Weight weights[] = {
    {Kind::rename, 10},        {Kind::changeValue, 8},
    {Kind::changeType, 8},     {Kind::changeFormat, 2},
    {Kind::add, 20},           {Kind::remove, 6},
    {Kind::move, 12},          {Kind::sortKeys, 4},
    {Kind::replaceContent, 1}, {Kind::undo, 10},
    {Kind::redo, 8},           {Kind::undoAll, 1},
    {Kind::redoAll, 1},        {Kind::clearHistory, 1},
    {Kind::takeSnapshot, 2},   {Kind::saveSnapshot, 2},
    {Kind::beginGroup, 2},     {Kind::endGroup, 4},
    {Kind::select, 20},        {Kind::expand, 6},
    {Kind::collapse, 4},       {Kind::reveal, 2},
    {Kind::filter, 3},         {Kind::addItem, 10},
    {Kind::duplicate, 4},      {Kind::deleteSelected, 4},
    {Kind::moveUp, 6},         {Kind::moveDown, 6},
    {Kind::sortSelected, 3},   {Kind::typeText, 6},
    {Kind::chooseType, 3},     {Kind::selectAll, 2},
    {Kind::expandSelected, 4}, {Kind::collapseSelected, 4},
    {Kind::collapseAll, 1},    {Kind::copy, 6},
    {Kind::paste, 6},          {Kind::drop, 12},
};

Kind randomKind(std::mt19937& random) {
    unsigned sum = 0;
    for (const Weight& weight : weights) {
        sum += weight.weight;
    }
    unsigned left = static_cast<unsigned>(random()) % sum;
    for (const Weight& weight : weights) {
        if (left < weight.weight) {
            return weight.kind;
        }
        left -= weight.weight;
    }
    return Kind::undo;
}

}  // namespace

std::vector<RandomOperation> RandomOperations::sequence(unsigned seed, std::size_t length) {
    std::mt19937 random(seed);
    std::vector<RandomOperation> operations(length);
    for (RandomOperation& operation : operations) {
        operation.kind = randomKind(random);
        std::ranges::generate(operation.choices,
                              [&random] { return static_cast<std::uint32_t>(random()); });
    }
    return operations;
}

std::vector<RandomOperation> RandomOperations::shrunk(
    std::vector<RandomOperation> failing,
    const std::function<bool(const std::vector<RandomOperation>&)>& fails) {
    // Large parts first: most of a long sequence has nothing to do with the failure.
    std::size_t length = failing.size() / 2;
    while (length > 0) {
        bool hasShrunk = false;
        for (std::size_t start = 0; start < failing.size();) {
            std::vector<RandomOperation> shorter = failing;
            const auto first = shorter.begin() + static_cast<std::ptrdiff_t>(start);
            const std::size_t count = std::min(length, shorter.size() - start);
            shorter.erase(first, first + static_cast<std::ptrdiff_t>(count));
            if (fails(shorter)) {
                failing = std::move(shorter);
                hasShrunk = true;
            } else {
                start += count;
            }
        }
        if (!hasShrunk || length > 1) {
            length /= 2;
        }
    }
    return failing;
}
