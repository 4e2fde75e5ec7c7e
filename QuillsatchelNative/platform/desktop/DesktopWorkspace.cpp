#include "platform/desktop/DesktopWorkspace.h"

#include "support/WebAddress.h"

#include <QDesktopServices>
#include <QUrl>

void DesktopWorkspace::open(const WebAddress &address)
{
    QDesktopServices::openUrl(QUrl(QString::fromStdString(address.absoluteString())));
}
