#pragma once

#include "views/OverlayCard.h"

#include <functional>
#include <string>

class QBoxLayout;
class LinkButton;

/// The card about the program: its author, a short note and a link to the website.
class AboutCard final : public OverlayCard
{
    Q_OBJECT

public:
    explicit AboutCard(QWidget *parent);

    /// The user followed the link to this address.
    std::function<void(const std::string &)> onOpenWebsite = [](const std::string &) {};

private:
    void addLogo(QBoxLayout &layout);
    void addNote(QBoxLayout &layout);
    void addSignature(QBoxLayout &layout);
    void connectLink(LinkButton &link);
};
