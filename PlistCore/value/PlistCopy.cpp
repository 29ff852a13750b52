#include "PlistCore/PlistCopy.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "PlistCore/PlistString.h"
#include "PlistCore/PlistType.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/memory/PlistArena.h"
#include "PlistCore/value/PlistBlock.h"
#include "PlistCore/value/PlistCell.h"
#include "PlistCore/value/PlistWalk.h"

namespace plist {

namespace {

/// A copy is worth its memory when the documents are this many times larger.
constexpr std::uint64_t worthwhileRatio = 8;

/// How much memory a value takes by itself, and how much the arenas that it keeps alive.
class Measure {
public:
    /// Whether the value is small against its arenas. Looks at no more of it than that needs.
    bool isSmallPart(const PlistValue& value) {
        visit(value);
        while (!pending_.empty() && !isLarge()) {
            const PlistValue& container = *pending_.back();
            pending_.pop_back();
            addKeys(container.keys());
            for (const PlistValue& child : container.children()) {
                visit(child);
            }
        }
        return !arenas_.empty() && !isLarge();
    }

    bool isSmallPart(const PlistString& text) {
        addBytes(text.cell());
        return !arenas_.empty() && !isLarge();
    }

private:
    /// The order does not matter, so that a list of what is left does for a walk.
    ///
    /// Texts and data count each time, because the copy shares containers alone.
    void visit(const PlistValue& value) {
        size_ += sizeof(PlistValue);
        if (!value.isContainer()) {
            addBytes(value.cell());
        } else if (value.childCount() != 0 && seen_.insert(value.cell().pointer()).second) {
            noteArena(value.cell());
            pending_.push_back(&value);
        }
    }

    void addKeys(std::span<const PlistString> keys) {
        if (!keys.empty() && seen_.insert(keys.data()).second) {
            for (const PlistString& key : keys) {
                size_ += sizeof(PlistString);
                addBytes(key.cell());
            }
        }
    }

    void addBytes(const detail::PlistCell& cell) {
        if (cell.has(detail::PlistCell::outOfLine)) {
            size_ += cell.length();
            noteArena(cell);
        }
    }

    void noteArena(const detail::PlistCell& cell) {
        if (!cell.has(detail::PlistCell::inArena)) {
            return;
        }
        const detail::PlistArena* arena = detail::PlistArena::of(cell.pointer());
        if (arena != lastArena_ && arenas_.insert(arena).second) {
            arenaSize_ += arena->valueBound() * sizeof(PlistValue);
        }
        lastArena_ = arena;
    }

    bool isLarge() const { return !arenas_.empty() && size_ > arenaSize_ / worthwhileRatio; }

    std::uint64_t size_ = 0;
    std::uint64_t arenaSize_ = 0;
    const detail::PlistArena* lastArena_ = nullptr;
    std::unordered_set<const detail::PlistArena*> arenas_;
    std::unordered_set<const void*> seen_;  ///< containers and lists of keys
    std::vector<const PlistValue*> pending_;
};

PlistString copyOf(const PlistString& text) {
    const detail::PlistCell& cell = text.cell();
    if (!cell.has(detail::PlistCell::outOfLine)) {
        return text;
    }
    const auto flags = static_cast<std::uint8_t>(cell.flags() & detail::PlistCell::ascii);
    return PlistString::adopting(
        detail::PlistBlock::cellOfBytes(PlistType::string, flags, text.view()));
}

/// Creates a value again, the containers within it first, and each of them once.
class Copier {
public:
    PlistValue copy(const PlistValue& root) {
        std::vector<PlistValue> result;
        add(root, result);
        while (!walk_.isAtEnd()) {
            if (const PlistValue* const child = walk_.next()) {
                add(*child, walk_.note());
                continue;
            }
            const PlistValue& source = walk_.container();
            PlistValue copied = made(source, walk_.leave());
            known_.emplace(source.cell().pointer(), copied);
            (walk_.isAtEnd() ? result : walk_.note()).push_back(std::move(copied));
        }
        return std::move(result.front());
    }

private:
    /// Appends the copy of a value to `children`, or opens it to be copied first.
    void add(const PlistValue& value, std::vector<PlistValue>& children) {
        if (!value.cell().has(detail::PlistCell::outOfLine)) {
            children.push_back(value);
        } else if (value.type() == PlistType::string) {
            children.push_back(PlistValue::string(copyOf(value.stringValue())));
        } else if (value.type() == PlistType::data) {
            children.push_back(PlistValue::data(value.dataValue()));
        } else if (const auto found = known_.find(value.cell().pointer()); found != known_.end()) {
            children.push_back(found->second);
        } else {
            walk_.enter(value, {});
            walk_.note().reserve(value.childCount());
        }
    }

    PlistValue made(const PlistValue& source, std::vector<PlistValue> children) {
        const std::span<const PlistString> keys = source.keys();
        if (keys.empty()) {
            return PlistValue::array(std::move(children));
        }
        const auto known = lists_.find(keys.data());
        if (known != lists_.end() && known->second.childCount() == keys.size()) {
            return PlistValue::dictionaryWithKeysOf(known->second, std::move(children));
        }
        std::vector<PlistString> copiedKeys;
        copiedKeys.reserve(keys.size());
        for (const PlistString& key : keys) {
            copiedKeys.push_back(copyOf(key));
        }
        PlistValue dictionary = PlistValue::dictionary(std::move(copiedKeys), std::move(children));
        lists_.insert_or_assign(keys.data(), dictionary);
        return dictionary;
    }

    detail::PlistWalk<std::vector<PlistValue>> walk_;           ///< with the copied children
    std::unordered_map<const void*, PlistValue> known_;         ///< by container
    std::unordered_map<const PlistString*, PlistValue> lists_;  ///< a copied owner of each list
};

}  // namespace

PlistValue PlistCopy::detached(const PlistValue& value) {
    return Measure().isSmallPart(value) ? Copier().copy(value) : value;
}

PlistString PlistCopy::detached(const PlistString& text) {
    return Measure().isSmallPart(text) ? copyOf(text) : text;
}

}  // namespace plist
