#pragma once

#include "launchers/LauncherStoreFixture.h"
#include "views/ElidedLabel.h"
#include "views/Input.h"
#include "views/LauncherSettingsCard.h"
#include "views/LauncherSlotEditor.h"
#include "views/OverlayScrollBar.h"
#include "views/ScrollView.h"
#include "views/TextField.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QRect>

#include <string>

/// What an editor shows, and its controls as the user finds them.
class EditorParts
{
public:
    explicit EditorParts(LauncherSlotEditor &editor)
        : m_editor(editor)
    {
    }

    std::string title() const { return label(0).text().toStdString(); }

    std::string subtitle() const { return label(1).text().toStdString(); }

    /// Empty where there is none to be seen.
    std::string message() const
    {
        const auto labels = m_editor.findChildren<ElidedLabel *>();
        const bool hasMessage = labels.size() == 3 && !labels[2]->isHidden();
        return hasMessage ? labels[2]->text().toStdString() : std::string();
    }

    ElidedLabel &label(qsizetype index) const
    {
        return *m_editor.findChildren<ElidedLabel *>().at(index);
    }

    TextField &field() const { return *m_editor.findChild<TextField *>(); }

    std::string urlText() const { return field().text().toStdString(); }

    QAbstractButton *clearButton() const { return Input::button(m_editor, "Clear launcher"); }

    QAbstractButton &chooseButton() const { return *Input::button(m_editor, "Choose App…"); }

    QAbstractButton &setButton() const { return *Input::button(m_editor, "Set URL"); }

    /// Puts `text` in place of what stands in the field, as pasting it does.
    void enter(const std::string &text) const
    {
        Input::click(field());
        field().selectAll();
        Input::commit(QString::fromStdString(text));
    }

    void submit(const std::string &text) const
    {
        enter(text);
        Input::key(field(), Qt::Key_Return);
    }

    static constexpr auto InvalidURL = "Enter a valid http or https website.";

private:
    LauncherSlotEditor &m_editor;
};

/// The card in a window like the panel.
class LauncherCardFixture : public LauncherStoreFixture
{
protected:
    LauncherCardFixture()
    {
        panel.resize(430, 650);
        Input::show(panel);
    }

    /// Returns when the card has come to rest.
    void openCard()
    {
        card = new LauncherSettingsCard(store(), machine.mainQueue, &panel);
        card->onClose = [this] { ++closings; };
        card->appear();
        EXPECT_TRUE(QTest::qWaitFor([this] { return closeButton().isVisible(); }));
        settle();
    }

    /// Lets the card follow the store, and sizes follow the content.
    void settle()
    {
        machine.mainQueue.runPending();
        QCoreApplication::processEvents();
    }

    QAbstractButton &closeButton() const
    {
        for (auto *const button : card->findChildren<QAbstractButton *>()) {
            if (Input::spokenName(*button) == "Close")
                return *button;
        }
        throw std::logic_error("no close button");
    }

    QList<LauncherSlotEditor *> editors() const
    {
        return card->findChildren<LauncherSlotEditor *>();
    }

    LauncherSlotEditor &editor(int slot) const { return *editors().at(slot); }

    EditorParts parts(int slot) const { return EditorParts(editor(slot)); }

    ScrollView &list() const { return *card->findChild<ScrollView *>(); }

    OverlayScrollBar &scrollBar() const { return *card->findChild<OverlayScrollBar *>(); }

    /// In the overlay's coordinates.
    QRect placeOf(const QWidget &widget) const
    {
        return { widget.mapTo(card.data(), QPoint()), widget.size() };
    }

    bool isInSight(const QWidget &widget) const
    {
        return placeOf(list()).contains(placeOf(widget));
    }

    QWidget panel;
    QPointer<LauncherSettingsCard> card;
    int closings = 0;
};
