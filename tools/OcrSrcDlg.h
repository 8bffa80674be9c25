#pragma once

#include <QDialog>

#include <cstdint>
#include <memory>
#include <optional>

class CKestImage;
namespace Ui {
class OcrSrcDlg;
}

/// The character of a new OCR source and the level at which it is made.
class COcrSrcDlg : public QDialog
{
    Q_OBJECT

public:
    /// The level is automatic unless one is given.
    COcrSrcDlg(const CKestImage& region, std::optional<int> level, QWidget* parent);
    ~COcrSrcDlg() override;

    /// The first character of the key's field; nothing while it is empty.
    std::optional<std::uint8_t> key() const;
    int level() const;

private:
    std::unique_ptr<Ui::OcrSrcDlg> m_ui;
};
