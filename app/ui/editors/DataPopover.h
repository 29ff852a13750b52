#pragma once

#include <QDialog>
#include <QTimer>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class QDialogButtonBox;
class QLabel;
class QPlainTextEdit;
class QProgressBar;

/// The bytes of one data item: shown as a hex dump, edited as Base64, imported from files and
/// exported to them.
class DataPopover : public QDialog {
    Q_OBJECT

public:
    using Bytes = std::span<const std::uint8_t>;

    /// How many bytes at most are shown as Base64 at once; the rest follow in further turns of the
    /// event loop.
    static constexpr std::size_t bytesPerTurn = std::size_t{57} * 1024;

    /// `name` is suggested as a file name; `apply` puts new bytes into the document.
    DataPopover(Bytes bytes, const QString& name, std::function<void(Bytes)> apply,
                QWidget* parent);
    ~DataPopover() override;

    /// Shows other bytes, which the item has now. What the user has typed is replaced.
    void setBytes(Bytes bytes);

private:
    class Base64Filler;

    void createLayout();
    void applyText();
    void apply(const std::optional<std::vector<std::uint8_t>>& bytes);
    void setInvalid(bool isInvalid);
    void askForImport();
    void askForExport();
    void beginActivity(const QString& activity);
    void endActivity();
    void importFrom(const QString& path);
    void exportTo(const QString& path);

    std::vector<std::uint8_t> bytes_;
    QString name_;
    std::function<void(Bytes)> apply_;
    QPlainTextEdit* dump_;
    QLabel* note_;
    QPlainTextEdit* base64_;
    std::unique_ptr<Base64Filler> filler_;
    QLabel* problem_;
    QDialogButtonBox* buttons_;
    /// Appears when an activity takes long.
    QProgressBar* progress_;
    QTimer progressDelay_;
    int activities_ = 0;     ///< how many have not ended
    bool isEdited_ = false;  ///< the text may stand for other bytes
};
