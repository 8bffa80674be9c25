#include "app/AboutBox.h"

#include "app/ProgramIcon.h"
#include "platform/Stdlib.h"

namespace ormalux::viewer {

AboutBox::AboutBox(QWidget* parent) : QMessageBox(parent)
{
    setObjectName(QStringLiteral("about"));
    setWindowTitle(tr("Ormalux 정보"));
    setIconPixmap(programIcon().pixmap(QSize(64, 64), devicePixelRatio()));
    setTextFormat(Qt::RichText);
    const QString rows[][2] = {
        {QStringLiteral("Ormalux"), QStringLiteral(ORMALUX_VERSION)},
        {QStringLiteral("Qt"), QString::fromLatin1(qVersion())},
        {tr("명령어 집합"), QString::fromLatin1(CStdlib::GetInstructionSet())},
        {tr("프로세서"), QString::number(CStdlib::GetNumOfProcessors())},
    };
    QString table;
    for (const auto& row : rows)
        table += QStringLiteral("<tr><td>%1&nbsp;&nbsp;&nbsp;</td><td>%2</td></tr>").arg(row[0], row[1]);
    setText(
        QStringLiteral("<h3>Ormalux</h3><p>%1</p><table>%2</table>").arg(tr("산업용 검사 머신 비전"), table));
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setStandardButtons(QMessageBox::Ok);
}

} // namespace ormalux::viewer
