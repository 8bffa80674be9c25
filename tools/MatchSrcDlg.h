#pragma once

#include <QDialog>

#include <cstdint>
#include <memory>
#include <optional>

class CKestImage;
namespace Ui {
class MatchSrcDlg;
}

/// The polarity of a new pattern source, black or white object, and the level at which it is made.
class CMatchSrcDlg : public QDialog
{
    Q_OBJECT

public:
    /// The level is automatic unless one is given.
    CMatchSrcDlg(const CKestImage& region, std::optional<int> level, QWidget* parent);
    ~CMatchSrcDlg() override;

    /// 0 or 255; nothing for any other text in the key's field.
    std::optional<std::uint8_t> key() const;
    int level() const;

private:
    std::unique_ptr<Ui::MatchSrcDlg> m_ui;
};
