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

/// The bytes of one data item: looked at as hexadecimal digits, edited as Base64, and brought from
/// and to files.
class DataPopover : public QDialog {
    Q_OBJECT

public:
    using Bytes = std::span<const std::uint8_t>;

    /// The most bytes that are shown as Base64 at once; more follow in further turns of the event
    /// loop.
    static constexpr std::size_t bytesPerTurn = std::size_t{57} * 1024;

    /// `name` is proposed as the name of a file; `apply` takes new bytes into the document.
    DataPopover(Bytes bytes, const QString& name, std::function<void(Bytes)> apply,
                QWidget* parent);
    ~DataPopover() override;

    /// The item has other bytes now. A text that the user has begun to edit is replaced.
    void setBytes(Bytes bytes);

    /// Whether the text was applied and is no Base64.
    bool isInvalid() const noexcept { return isInvalid_; }

private:
    class Base64Filler;

    void makeLayout();
    void applyText();
    void apply(const std::optional<std::vector<std::uint8_t>>& bytes);
    void setInvalid(bool isInvalid);
    void askForImport();
    void askForExport();
    void begin(const QString& activity);
    void finish();
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
    /// Appears when something takes its time.
    QProgressBar* progress_;
    QTimer patience_;
    int activities_ = 0;     ///< how many things have not come to their end
    bool isEdited_ = false;  ///< the text may be other bytes
    bool isInvalid_ = false;
};
