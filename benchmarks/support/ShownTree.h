#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistValue.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNode.h"

/// A tree of nodes with all its rows on show, and the yardstick for what is done with it. Of a
/// header alone, because other measuring programs do without the model.
struct ShownTree {
    /// Makes a value with about so many rows.
    using Shape = plist::PlistValue (*)(std::int64_t rows);

    ShownTree(Shape shape, std::int64_t rows) : root(PlistNode::create({}, shape(rows))) {
        outline.rebuild(*root);
        expandAll(outline, *root);
        require(static_cast<std::int64_t>(outline.rows().size()) >= rows, "all rows are shown");
    }

    static void expandAll(OutlineState& outline, PlistNode& root) {
        outline.setExpanded(root, OutlineState::Expansion::expand,
                            OutlineState::Reach::wholeSubtree);
    }

    /// A plain walk over all nodes.
    std::int64_t walk() const { return walk(*root); }

    static std::int64_t walk(PlistNode& root) {
        std::int64_t sum = 0;
        std::vector<PlistNode*> waiting{&root};
        while (!waiting.empty()) {
            PlistNode* node = waiting.back();
            waiting.pop_back();
            sum += node->id();
            for (const PlistNodePtr& child : node->children()) {
                waiting.push_back(child.get());
            }
        }
        return sum;
    }

    static plist::PlistValue numbers(std::int64_t rows) {
        std::vector<plist::PlistValue> items;
        for (std::int64_t i = 1; i < rows; ++i) {
            items.push_back(plist::PlistValue::integer(i));
        }
        return plist::PlistValue::array(std::move(items));
    }

    /// One dictionary with as many keys as there are rows.
    static plist::PlistValue keys(std::int64_t rows) {
        std::vector<plist::PlistEntry> entries;
        for (std::int64_t i = 1; i < rows; ++i) {
            entries.push_back(
                {"a key with number " + std::to_string(i), plist::PlistValue::integer(i)});
        }
        return plist::PlistValue::dictionary(std::move(entries));
    }

    /// An array of dictionaries with four fields each.
    static plist::PlistValue records(std::int64_t rows) {
        constexpr std::int64_t rowsPerRecord = 5;
        std::vector<plist::PlistValue> items;
        for (std::int64_t i = 0; i < rows / rowsPerRecord; ++i) {
            items.push_back(plist::PlistValue::dictionary(
                {{"name", plist::PlistValue::string(std::to_string(i))},
                 {"identifier", plist::PlistValue::integer(i)},
                 {"weight", plist::PlistValue::real(0.5)},
                 {"active", plist::PlistValue::boolean(true)}}));
        }
        return plist::PlistValue::array(std::move(items));
    }

    static void require(bool holds, const char* what) {
        if (!holds) {
            std::fprintf(stderr, "wrong answer: %s\n", what);
            std::abort();
        }
    }

    PlistNodePtr root;
    OutlineState outline;
};
