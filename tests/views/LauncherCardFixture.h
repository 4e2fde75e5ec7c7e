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

/// The texts and controls of an editor.
class EditorParts
{
public:
    explicit EditorParts(LauncherSlotEditor &editor)
        : m_editor(editor)
    {
    }

    std::string title() const { return label(0).text().toStdString(); }

    std::string subtitle() const { return label(1).text().toStdString(); }

    /// Empty while no message is visible.
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

    /// Replaces the text of the field, as pasting does.
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

/// The card in a window of the panel's size.
class LauncherCardFixture : public LauncherStoreFixture
{
protected:
    LauncherCardFixture()
    {
        panel.resize(430, 650);
        Input::show(panel);
    }

    /// Opens the card and waits for its animation to end.
    void openCard()
    {
        card = new LauncherSettingsCard(store(), machine.mainQueue, &panel);
        card->onClose = [this] { ++closings; };
        card->appear();
        EXPECT_TRUE(QTest::qWaitFor([this] { return closeButton().isVisible(); }));
        settle();
    }

    /// Renders pending changes and updates the layout.
    void settle()
    {
        machine.mainQueue.runPending();
        QCoreApplication::processEvents();
    }

    QAbstractButton &closeButton() const
    {
        for (auto *const button : card->findChildren<QAbstractButton *>()) {
            if (Input::accessibleName(*button) == "Close")
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

    /// In the coordinates of the overlay.
    QRect frameOf(const QWidget &widget) const { return Input::frameIn(*card, widget); }

    bool isFullyVisible(const QWidget &widget) const
    {
        return frameOf(list()).contains(frameOf(widget));
    }

    QWidget panel;
    QPointer<LauncherSettingsCard> card;
    int closings = 0;
};
