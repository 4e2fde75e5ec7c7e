#include "views/ApplicationRowDelegate.h"

#include "views/ApplicationIcons.h"
#include "views/ApplicationListModel.h"
#include "views/ChoiceList.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/Symbol.h"

#include <QFontMetrics>
#include <QPainter>

namespace
{

using namespace Qt::StringLiterals;

constexpr int RowHeight = 42;
constexpr int Padding = 9;
constexpr int IconSpacing = 10;
constexpr int LineSpacing = 1;
constexpr auto NameColor = SrgbColor::white(0.92);
constexpr auto SelectedCommentColor = SrgbColor::white(0.8); // on the accent colour

void drawLine(QPainter &painter, const QRect &line, const QFont &font, const SrgbColor &color,
              const QString &text)
{
    painter.setFont(font);
    painter.setPen(Painting::qColor(color));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, Qt::ElideRight, line.width()));
}

} // namespace

ApplicationRowDelegate::ApplicationRowDelegate(ApplicationIcons &icons, QObject *parent)
    : QAbstractItemDelegate(parent)
    , m_icons(icons)
    , m_nameFont(Painting::systemFont(12, QFont::DemiBold))
    , m_commentFont(Painting::systemFont(10))
{
}

QSize ApplicationRowDelegate::sizeHint(const QStyleOptionViewItem & /*option*/,
                                       const QModelIndex & /*index*/) const
{
    return { 0, RowHeight };
}

void ApplicationRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                   const QModelIndex &index) const
{
    painter->save();
    ChoiceList::paintRowBackground(*painter, option);
    QRect frame = option.rect.adjusted(Padding, 0, -Padding, 0);
    paintIcon(*painter, { frame.left(), frame.center().y() - IconSize / 2 + 1, IconSize, IconSize },
              index);
    frame.setLeft(frame.left() + IconSize + IconSpacing);
    paintTexts(*painter, frame, index, option.state.testFlag(QStyle::State_Selected));
    painter->restore();
}

void ApplicationRowDelegate::paintIcon(QPainter &painter, const QRect &frame,
                                       const QModelIndex &index) const
{
    const auto path = index.data(ApplicationListModel::pathRole).value<std::string>();
    const auto *const icon = m_icons.icon(path, painter.device()->devicePixelRatio());
    if (!icon)
        return;
    if (icon->isNull())
        Symbol::paint(painter, u"app"_s, frame, SatchelTheme::secondary);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(Painting::onWholePixels(painter, frame.topLeft()), frame.size()),
                      *icon);
}

void ApplicationRowDelegate::paintTexts(QPainter &painter, const QRect &frame,
                                        const QModelIndex &index, bool isSelected) const
{
    const QString name = index.data().toString();
    const QString comment = index.data(ApplicationListModel::commentRole).toString();
    const int nameHeight = QFontMetrics(m_nameFont).height();
    const int commentHeight =
        comment.isEmpty() ? 0 : LineSpacing + QFontMetrics(m_commentFont).height();
    QRect line = frame;
    line.setTop(frame.top() + (frame.height() - nameHeight - commentHeight) / 2);
    line.setHeight(nameHeight);
    drawLine(painter, line, m_nameFont, NameColor, name);
    line.translate(0, nameHeight + LineSpacing);
    line.setHeight(commentHeight);
    drawLine(painter, line, m_commentFont,
             isSelected ? SelectedCommentColor : SatchelTheme::secondary, comment);
}
