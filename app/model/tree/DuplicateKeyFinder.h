#pragma once

#include <cstddef>

#include "app/model/tree/KeyTable.h"

class PlistNode;

/// Finds out which keys of a dictionary are there twice, all at once or some at a time: comparing a
/// million keys takes longer than a window may leave its user without an answer.
class DuplicateKeyFinder {
public:
    /// For a dictionary whose children have been made. It must outlive the finder, and its entries
    /// must stay as they are until all have been looked at. None of them may count as repeated yet.
    explicit DuplicateKeyFinder(PlistNode& dictionary);

    /// Looks at up to `count` more keys; true when that were all, which the dictionary knows then.
    bool find(std::size_t count);

private:
    PlistNode& dictionary_;
    KeyTable table_;
};
