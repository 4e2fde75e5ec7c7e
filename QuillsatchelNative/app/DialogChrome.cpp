#include "app/DialogChrome.h"

#include "app/DialogTitleBar.h"
#include "app/PanelFrame.h"
#include "app/TitleBar.h"

#include <QDialog>
#include <QEvent>
#include <QLayout>
#include <QPainter>
#include <QScreen>

void DialogChrome::addTo(QDialog &dialog, WindowSystem &windowSystem)
{
    new DialogChrome(dialog, windowSystem);
}

DialogChrome::DialogChrome(QDialog &dialog, WindowSystem &windowSystem)
    : QObject(&dialog)
    , m_dialog(dialog)
    , m_windowSystem(windowSystem)
    , m_titleBar(new DialogTitleBar(&dialog))
    , m_frame(new PanelFrame(&dialog))
{
    dialog.setWindowFlag(Qt::FramelessWindowHint);
    dialog.setAttribute(Qt::WA_TranslucentBackground);
    dialog.setSizeGripEnabled(false);
    dialog.installEventFilter(this);
    addTopMargin();
    arrange();
    m_compositingCancellable = windowSystem.isCompositing.sink([this](bool) { renderEdge(); });
}

void DialogChrome::addTopMargin()
{
    const QSize growth(0, TitleBar::Height);
    auto &layout = *m_dialog.layout();
    layout.setContentsMargins(layout.contentsMargins() + QMargins(0, growth.height(), 0, 0));
    m_dialog.setMinimumSize(m_dialog.minimumSize() + growth);
    const QSize largest = m_dialog.screen()->availableGeometry().size();
    m_dialog.resize((m_dialog.size() + growth).boundedTo(largest));
}

bool DialogChrome::eventFilter(QObject * /*dialog*/, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        arrange();
    else if (event->type() == QEvent::WindowStateChange)
        renderEdge();
    else if (event->type() == QEvent::Paint)
        paintBackground();
    return false;
}

void DialogChrome::arrange()
{
    m_titleBar->setGeometry(0, 0, m_dialog.width(), TitleBar::Height);
    m_frame->setGeometry(m_dialog.rect());
    m_frame->raise();
}

void DialogChrome::renderEdge()
{
    m_frame->render(m_windowSystem.isCompositing.get());
}

// Qt paints no background for a translucent window. The frame rounds the corners.
void DialogChrome::paintBackground()
{
    QPainter(&m_dialog).fillRect(m_dialog.rect(), m_dialog.palette().window());
}
