#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "app/model/outline/OutlineRow.h"
#include "app/model/tree/PlistNodeObserver.h"

/// The rows of an outline, each holding a reference to its node, so that a node which has left the
/// tree lives until its row is removed too.
///
/// References are counted only for rows that are added or removed: an edit among a million rows
/// does not touch a million counts.
class OutlineRowList {
public:
    OutlineRowList() noexcept = default;
    OutlineRowList(const OutlineRowList&) = delete;
    OutlineRowList& operator=(const OutlineRowList&) = delete;
    ~OutlineRowList();

    const std::vector<OutlineRow>& rows() const noexcept { return rows_; }

    /// Replaces all rows.
    void reset(std::vector<OutlineRow> rows);

    /// Replaces the rows from `first` up to, but not including, `end`.
    void replace(std::size_t first, std::size_t end, std::vector<OutlineRow> rows);

    /// Removes the rows from `first` up to, but not including, `end`.
    void remove(std::size_t first, std::size_t end);

    /// Inserts `rows` before the row with the number `place`.
    void insert(std::size_t place, std::span<const OutlineRow> rows);

    /// Gives the children of the row with the number `parent` their numbers from the row `start`
    /// on, where some came or went before it. Returns the last row that got another number;
    /// `parent` if none did.
    std::size_t renumber(std::size_t parent, std::size_t start, const PlistNodeRun& run);

    /// Puts `rows` in place of some of those from `at` on. Of them those from `first` up to `end`
    /// are added, and the others show the nodes that are here now, in the same order.
    void update(std::size_t at, std::vector<OutlineRow> rows, std::size_t first, std::size_t end);

private:
    static void retain(const OutlineRow* first, const OutlineRow* end) noexcept;
    static void release(const OutlineRow* first, const OutlineRow* end) noexcept;

    void insertRetained(std::size_t place, std::span<const OutlineRow> rows);

    std::vector<OutlineRow> rows_;
};
