#pragma once

#include "views/OverlayCard.h"

#include <functional>
#include <string>

class QBoxLayout;
class LinkButton;

/// Who made the program, with a word from them and a link to their website.
class AboutCard final : public OverlayCard
{
    Q_OBJECT

public:
    explicit AboutCard(QWidget *parent);

    /// The user follows the link to this address.
    std::function<void(const std::string &)> onOpenWebsite = [](const std::string &) {};

private:
    void addLogo(QBoxLayout &layout);
    void addNote(QBoxLayout &layout);
    void addSignature(QBoxLayout &layout);
    void connectLink(LinkButton &link);
};
