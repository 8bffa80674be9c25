#include "tools/UserFilterDlg.h"

#include "ui_UserFilterDlg.h"

#include <QCoreApplication>
#include <QSignalBlocker>

#include <algorithm>
#include <numeric>
#include <vector>

using ormalux::KernelPreset;
using ormalux::kernelPresets;
using ormalux::UserFilterTool;

namespace {

constexpr int largestEntry = 99999; ///< keeps every sum of nine levels within 32 bits

}

CUserFilterDlg::CUserFilterDlg(ormalux::ToolHost& host, QWidget* parent)
    : EffectDlg(host, nullptr, parent), m_ui(std::make_unique<Ui::UserFilterDlg>())
{
    m_ui->setupUi(this);
    QWidget* last = m_ui->preset;
    for (int i = 0; i < 9; ++i) {
        QSpinBox* const entry = m_entries[i] = new QSpinBox(m_ui->kernelBox);
        entry->setObjectName(QStringLiteral("kernel%1").arg(i));
        entry->setAccessibleName(QStringLiteral("kernel[%1]").arg(i));
        entry->setAlignment(Qt::AlignRight);
        entry->setRange(-largestEntry, largestEntry);
        entry->setValue(m_tool.kernel[std::size_t(i)]);
        m_ui->kernelGrid->addWidget(entry, i / 3, i % 3);
        connect(entry, &QSpinBox::valueChanged, this, &CUserFilterDlg::refresh);
        setTabOrder(last, entry);
        last = entry;
    }
    m_ui->divisor->setRange(-largestEntry, largestEntry);
    m_ui->divisor->setValue(m_tool.divisor);
    m_ui->offset->setRange(-largestEntry, largestEntry);
    m_ui->threaded->setChecked(m_tool.threaded);
    for (QWidget* const next :
         std::initializer_list<QWidget*>{m_ui->divisor, m_ui->sumToDivisor, m_ui->offset, m_ui->threaded}) {
        setTabOrder(last, next);
        last = next;
    }
    fillPresets();
    attach("CUserFilterDlg", m_ui->buttons);
    for (QSpinBox* const field : {m_ui->divisor, m_ui->offset})
        connect(field, &QSpinBox::valueChanged, this, &CUserFilterDlg::refresh);
    connect(m_ui->threaded, &QAbstractButton::toggled, this, &CUserFilterDlg::refresh);
    connect(m_ui->preset, &QComboBox::activated, this, &CUserFilterDlg::takePreset);
    connect(m_ui->sumToDivisor, &QAbstractButton::clicked, this, [this] {
        effect();
        const int sum = std::accumulate(m_tool.kernel.begin(), m_tool.kernel.end(), 0);
        m_ui->divisor->setValue(sum == 0 ? 1 : sum);
    });
}

CUserFilterDlg::~CUserFilterDlg() = default;

/// The first entry stands for a kernel without a name.
void CUserFilterDlg::fillPresets()
{
    const QSignalBlocker quiet(m_ui->preset);
    m_ui->preset->clear();
    m_ui->preset->addItem(tr("직접 입력"));
    for (const KernelPreset& preset : kernelPresets())
        m_ui->preset->addItem(QCoreApplication::translate("ormalux::KernelPreset", preset.name));
    namePreset();
}

void CUserFilterDlg::takePreset(int index)
{
    if (index < 1)
        return namePreset();
    const KernelPreset& preset = kernelPresets()[std::size_t(index) - 1];
    {
        // Seen once, when all numbers stand.
        std::vector<std::unique_ptr<QSignalBlocker>> quiet;
        for (int i = 0; i < 9; ++i) {
            quiet.push_back(std::make_unique<QSignalBlocker>(m_entries[i]));
            m_entries[i]->setValue(preset.kernel[std::size_t(i)]);
        }
        quiet.push_back(std::make_unique<QSignalBlocker>(m_ui->divisor));
        m_ui->divisor->setValue(preset.divisor);
        quiet.push_back(std::make_unique<QSignalBlocker>(m_ui->offset));
        m_ui->offset->setValue(preset.offset);
    }
    refresh();
}

/// Names the kernel that stands in the fields.
void CUserFilterDlg::namePreset()
{
    const auto presets = kernelPresets();
    const auto found = std::find_if(presets.begin(), presets.end(), [this](const KernelPreset& preset) {
        return preset.kernel == m_tool.kernel && preset.divisor == m_tool.divisor &&
               preset.offset == m_tool.offset;
    });
    m_ui->preset->setCurrentIndex(found == presets.end() ? 0 : int(found - presets.begin()) + 1);
}

const ormalux::EffectTool& CUserFilterDlg::effect()
{
    for (std::size_t i = 0; i < m_tool.kernel.size(); ++i)
        m_tool.kernel[i] = m_entries[i]->value();
    m_tool.divisor = m_ui->divisor->value();
    m_tool.offset = m_ui->offset->value();
    m_tool.threaded = m_ui->threaded->isChecked();
    namePreset();
    return m_tool;
}

void CUserFilterDlg::retranslate()
{
    m_ui->retranslateUi(this);
    fillPresets();
}
