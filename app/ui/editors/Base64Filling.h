#pragma once

#include <QObject>
#include <QTimer>
#include <cstddef>
#include <cstdint>
#include <span>

class QPlainTextEdit;

/// Fills a text editor with the Base64 of bytes, in lines: an editor is slow with a single line of
/// megabytes. Many bytes go there in several turns of the event loop, because millions of lines
/// take longer than a window may leave its user without an answer.
class Base64Filling : public QObject {
    Q_OBJECT

public:
    /// The most bytes that are there at once.
    static constexpr std::size_t bytesPerTurn = std::size_t{57} * 1024;

    /// The editor must outlive the filling.
    explicit Base64Filling(QPlainTextEdit& editor, QObject* parent = nullptr);

    /// Replaces the text. The bytes must stay as they are until all are there; meanwhile the editor
    /// can only be looked at. Starting again gives up what was not done.
    void start(std::span<const std::uint8_t> bytes);

    bool isDone() const noexcept { return rest_.empty(); }

Q_SIGNALS:
    /// All bytes are there. Only if that took more than one turn.
    void done();

private:
    void addSome();
    QString takeLines();

    QPlainTextEdit& editor_;
    std::span<const std::uint8_t> rest_;
    QTimer next_;
};
