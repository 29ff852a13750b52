#pragma once

#include <cstddef>
#include <optional>
#include <vector>

/// How rows have moved since their nodes were given their numbers as hints: where rows are added or
/// removed in the middle, all that follow have new numbers, which nobody writes into a million
/// nodes.
class RowHintCorrections {
public:
    /// The most moves that are remembered. Looking for a node without a row costs their square.
    static constexpr std::size_t limit = 100;

    bool isFull() const noexcept { return shifts_.size() >= limit; }

    /// All hints are right.
    void clear() noexcept { shifts_.clear(); }

    /// The rows from `row` on have moved by `distance`.
    void add(std::size_t row, std::ptrdiff_t distance) {
        shifts_.push_back({static_cast<std::ptrdiff_t>(row), distance});
    }

    /// The number that the row with the number `hint` has now: the first candidate that `isRight`
    /// accepts, since it is not known after which of the moves the hint was given.
    template <typename Predicate>
    std::optional<int> find(int hint, const Predicate& isRight) const {
        for (std::size_t given = shifts_.size() + 1; given > 0; --given) {
            const int moved = moveFrom(hint, given - 1);
            if (isRight(moved)) {
                return moved;
            }
        }
        return std::nullopt;
    }

private:
    struct Shift {
        std::ptrdiff_t row;
        std::ptrdiff_t distance;
    };

    int moveFrom(std::ptrdiff_t row, std::size_t given) const {
        for (std::size_t i = given; i < shifts_.size(); ++i) {
            row += row >= shifts_[i].row ? shifts_[i].distance : 0;
        }
        return static_cast<int>(row);
    }

    std::vector<Shift> shifts_;
};
