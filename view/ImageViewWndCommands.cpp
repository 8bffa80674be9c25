#include "view/ImageViewWnd.h"

#include "view/WindowState.h"

bool CKestWnd::SendCommand(int command)
{
    const bool known = m->view->SendCommand(command);
    if (known)
        Q_EMIT commandSent(command);
    return known;
}
