#include "app/DialogTitleBar.h"

#include "app/TrafficLight.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"

#include <QLabel>
#include <QMouseEvent>

namespace
{

using namespace Qt::StringLiterals;

constexpr int CloseInset = 8;

} // namespace

DialogTitleBar::DialogTitleBar(QWidget *dialog)
    : QWidget(dialog)
    , m_close(new TrafficLight(u"xmark"_s, SatchelTheme::accent, tr("Close"), this))
    , m_title(new QLabel(dialog->windowTitle(), this))
{
    connect(m_close, &QAbstractButton::clicked, dialog, &QWidget::close);
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setFont(Painting::systemFont(11, QFont::DemiBold));
    QPalette palette;
    palette.setColor(QPalette::WindowText, Painting::qColor(SatchelTheme::secondary));
    m_title->setPalette(palette);
}

void DialogTitleBar::resizeEvent(QResizeEvent * /*event*/)
{
    m_close->move(CloseInset, (height() - m_close->height()) / 2);
    const int aside = CloseInset + m_close->width();
    m_title->setGeometry(rect().marginsRemoved({ aside, 0, aside, 0 }));
}

void DialogTitleBar::mousePressEvent(QMouseEvent *event)
{
    m_drag.press(*event);
}

void DialogTitleBar::mouseMoveEvent(QMouseEvent *event)
{
    m_drag.move(*event);
}
