#pragma once

#include <QString>
#include <optional>

/// Lets tests see that a programming error is noticed: while one of these lives, a failed check
/// throws instead of ending the process.
class BrokenRule {
public:
    BrokenRule();
    ~BrokenRule();
    BrokenRule(const BrokenRule&) = delete;
    BrokenRule& operator=(const BrokenRule&) = delete;

    /// The rule that `action` breaks, or nothing if it runs through.
    template <typename Action>
    std::optional<QString> of(const Action& action) const {
        try {
            action();
        } catch (const Failure& failure) {
            return QString::fromUtf8(failure.rule);
        }
        return std::nullopt;
    }

private:
    struct Failure {
        const char* rule;
    };

    static void fail(const char* rule);
};
