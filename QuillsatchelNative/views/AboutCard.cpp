#include "views/AboutCard.h"

#include "views/LinkButton.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"

#include <QVBoxLayout>

namespace
{

using namespace Qt::StringLiterals;

constexpr OverlayCard::Look AboutLook { .maximumWidth = 320,
                                        .backdropOpacity = 0.58,
                                        .fillOpacity = 0.97,
                                        .shadow = {
                                            .opacity = 0.55, .blurRadius = 28, .offset = 14 } };
constexpr QSize LogoSize(205, 112);
constexpr int HorizontalPadding = 22;
constexpr int VerticalPadding = 18;
constexpr int Spacing = 10;
constexpr int SignatureSpacing = 2;

const std::string Website = QUILLSATCHEL_WEBSITE;

QString author()
{
    return QStringLiteral(QUILLSATCHEL_AUTHOR);
}

QString capitalised(QString text)
{
    if (!text.isEmpty())
        text[0] = text[0].toUpper();
    return text;
}

} // namespace

AboutCard::AboutCard(QWidget *parent)
    : OverlayCard(tr("About Quillsatchel"), AboutLook, parent)
{
    auto *const layout = new QVBoxLayout(card());
    layout->setContentsMargins(HorizontalPadding, VerticalPadding, HorizontalPadding,
                               VerticalPadding);
    layout->setSpacing(Spacing);
    addLogo(*layout);
    addNote(*layout);
    addSignature(*layout);
}

void AboutCard::addLogo(QBoxLayout &layout)
{
    auto *const logo = LinkButton::withArtwork(u"Logo"_s, LogoSize, card());
    logo->setLabel(tr("Visit %1").arg(QString::fromStdString(Website)));
    connectLink(*logo);
    layout.addWidget(logo, 0, Qt::AlignHCenter);
}

void AboutCard::addNote(QBoxLayout &layout)
{
    addText(layout, tr("Created by %1").arg(author()), Painting::systemFont(13, QFont::DemiBold));
    const QFont font = Painting::systemFont(11);
    addText(layout,
            tr("I built Quillsatchel because I was tired of hunting through old chats, notes, and "
               "documents for the same blocks of text I use all the time."),
            font);
    addText(layout, tr("Hopefully it makes your workflow a little faster too."), font);
    addText(layout, tr("Thanks for trying it."), font);
}

void AboutCard::addSignature(QBoxLayout &layout)
{
    auto *const signature = new QVBoxLayout;
    layout.addLayout(signature); // first: the card then owns the texts in reading order
    signature->setSpacing(SignatureSpacing);
    addText(*signature, capitalised(author()), Painting::systemFont(11, QFont::DemiBold));

    addText(*signature, tr("Small tools for people who write"), Painting::systemFont(10),
            SatchelTheme::secondary);

    auto *const link = LinkButton::withText(QString::fromStdString(Website), card());
    link->setToolTip(tr("Visit %1").arg(QString::fromStdString(Website)));
    connectLink(*link);
    signature->addWidget(link, 0, Qt::AlignHCenter);
}

void AboutCard::connectLink(LinkButton &link)
{
    connect(&link, &QAbstractButton::clicked, this, [this] { onOpenWebsite(Website); });
}
