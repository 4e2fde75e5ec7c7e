#pragma once

#include "views/ChoiceList.h"
#include "views/FindCard.h"
#include "views/MessageLine.h"
#include "views/PanelContentFixture.h"
#include "views/TextField.h"

#include <string>
#include <vector>

/// The content of the panel, with the find card.
class FindCardFixture : public PanelContentFixture
{
protected:
    FindCard *findCard() const { return view->findChild<FindCard *>(); }

    /// Opens the card and waits until it has faded in.
    void openCard(const QString &query = {})
    {
        view->find(query);
        ASSERT_TRUE(QTest::qWaitFor([this] { return field().hasFocus(); }));
        settle();
    }

    void expectClosed()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] {
            settle();
            return !findCard();
        }));
    }

    TextField &field() const { return *findCard()->findChild<TextField *>(); }

    ChoiceList &list() const { return *findCard()->findChild<ChoiceList *>(); }

    void type(const std::string &letters)
    {
        Input::type(*view, letters);
        settle();
    }

    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {})
    {
        Input::key(*view, which, modifiers);
        settle();
    }

    /// The excerpts, in order.
    Texts found() const
    {
        Texts texts;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            texts.push_back(list().model()->index(row, 0).data().toString().toStdString());
        return texts;
    }

    std::string selected() const { return list().currentIndex().data().toString().toStdString(); }

    std::string count() const
    {
        return Input::accessibleName(*findCard()->findChild<MessageLine *>());
    }

    void clickRow(int row, Qt::KeyboardModifiers modifiers = {})
    {
        const QPoint place = list().visualRect(list().model()->index(row, 0)).center();
        QTest::mouseClick(view->window()->windowHandle(), Qt::LeftButton, modifiers,
                          Input::toWindow(*list().viewport(), place));
        settle();
    }

    std::string clipboard() const { return machine.pasteboard.text().value_or(""); }
};
