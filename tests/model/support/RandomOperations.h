#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

/// What a user, or the program on its way, does to a document: a kind, and numbers that choose the
/// items and values when it is done. The numbers mean something in every state, so a sequence that
/// lost some of its operations is still a sequence.
struct RandomOperation {
    enum class Kind : std::uint8_t {
        rename,
        changeValue,
        changeType,
        changeFormat,
        add,
        remove,
        move,
        sortKeys,
        replaceContent,
        undo,
        redo,
        undoAll,
        redoAll,
        clearHistory,
        takeSnapshot,
        saveSnapshot,
        beginGroup,
        endGroup,
        select,
        expand,
        collapse,
        reveal,
        filter,
        addItem,
        duplicate,
        deleteSelected,
        moveUp,
        moveDown,
        sortSelected,
        typeText,
        chooseType,
        selectAll,
        expandSelected,
        collapseSelected,
        collapseAll,
        copy,
        paste,
        drop,
    };

    Kind kind = Kind::undo;
    std::array<std::uint32_t, 6> choices = {};
};

namespace RandomOperations {

/// The same operations for the same seed, on every platform. Most are edits.
std::vector<RandomOperation> sequence(unsigned seed, std::size_t length);

/// A shorter sequence that still fails, from which no operation can be left out.
std::vector<RandomOperation> shrunk(
    std::vector<RandomOperation> failing,
    const std::function<bool(const std::vector<RandomOperation>&)>& fails);

}  // namespace RandomOperations
