#include "app/RegionDlg.h"

#include "ui_RegionDlg.h"
#include "view/ImageViewWnd.h"

#include <QSignalBlocker>

#include <algorithm>

namespace ormalux::viewer {

RegionDlg::RegionDlg(CKestWnd& window, QWidget* parent)
    : QDialog(parent), m_window(window), m_ui(std::make_unique<Ui::RegionDlg>()),
      m_before(window.GetTrackerRect()), m_modeBefore(window.IsTrackerMode())
{
    m_ui->setupUi(this);
    const int right = window.GetWidth() - 1, bottom = window.GetHeight() - 1;
    const CRect start = m_before == CRect() ? CRect{0, 0, right, bottom} : m_before;
    struct Field
    {
        QSpinBox* box;
        int most;
        int value;
    };
    for (const Field& field : {Field{m_ui->left, right, start.left},
                               {m_ui->top, bottom, start.top},
                               {m_ui->right, right, start.right},
                               {m_ui->bottom, bottom, start.bottom}}) {
        field.box->setMaximum(field.most);
        field.box->setValue(field.value);
        connect(field.box, &QSpinBox::valueChanged, this, &RegionDlg::cornersChanged);
    }
    m_ui->regionWidth->setMaximum(right + 1);
    m_ui->regionHeight->setMaximum(bottom + 1);
    connect(m_ui->regionWidth, &QSpinBox::valueChanged, this, &RegionDlg::sizeChanged);
    connect(m_ui->regionHeight, &QSpinBox::valueChanged, this, &RegionDlg::sizeChanged);
    connect(this, &QDialog::rejected, this, &RegionDlg::restore);
    m_window.SetTrackerMode(1);
    cornersChanged();
    m_ui->left->selectAll();
}

RegionDlg::~RegionDlg() = default;

CRect RegionDlg::region() const
{
    const int left = m_ui->left->value(), right = m_ui->right->value();
    const int top = m_ui->top->value(), bottom = m_ui->bottom->value();
    return {std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)};
}

void RegionDlg::cornersChanged()
{
    const CRect r = region();
    const QSignalBlocker width(m_ui->regionWidth), height(m_ui->regionHeight);
    m_ui->regionWidth->setValue(r.Width() + 1);
    m_ui->regionHeight->setValue(r.Height() + 1);
    m_window.SetTrackerPosition(r);
}

/// The left and top stay as long as the size fits beside them.
void RegionDlg::sizeChanged()
{
    const CRect r = region();
    const int left = std::min<int>(r.left, m_window.GetWidth() - m_ui->regionWidth->value());
    const int top = std::min<int>(r.top, m_window.GetHeight() - m_ui->regionHeight->value());
    const QSignalBlocker a(m_ui->left), b(m_ui->top), c(m_ui->right), d(m_ui->bottom);
    m_ui->left->setValue(left);
    m_ui->top->setValue(top);
    m_ui->right->setValue(left + m_ui->regionWidth->value() - 1);
    m_ui->bottom->setValue(top + m_ui->regionHeight->value() - 1);
    m_window.SetTrackerPosition(region());
}

void RegionDlg::restore()
{
    m_window.SetTrackerPosition(m_before);
    m_window.SetTrackerMode(m_modeBefore);
}

} // namespace ormalux::viewer
