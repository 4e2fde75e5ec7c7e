#pragma once

#include "launchers/LauncherIcon.h"
#include "launchers/LauncherItem.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

class ElidedLabel;
class LauncherStore;
class PushButton;
class SymbolButton;
class TextField;

/// Shows what one launcher slot holds and lets the user fill it with an application or a website,
/// or empty it. What the user does goes to the store at once.
class LauncherSlotEditor final : public QWidget
{
    Q_OBJECT

public:
    /// Slots are counted from 0. The store outlives the editor.
    LauncherSlotEditor(LauncherStore &store, int slot, QWidget *parent);

    /// The user asked for a website that is none, and the editor has said so.
    std::function<void()> onInvalidURL = [] {};

    /// Brings the editor in line with the slot. The icon is read anew every time; the website field
    /// follows only when the slot holds something else than before.
    void render();

    /// How many UTF-16 units of a text the website field takes. One that fills it may have been cut
    /// off and is no valid website.
    static constexpr int LongestURL = 1 << 15;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    const std::optional<LauncherItem> &item() const;
    void makeField();
    void makeMessage();
    void renderIcon();
    void renderTexts();
    void renderSetButton();
    void followItem();
    void showURL(const std::string &url);
    void submit();
    void clear();
    void showInvalidURL(bool isInvalid);
    void layOut();
    void layOutSummary();
    QString heardSummary() const;
    int summaryHeight() const;
    int controlsTop() const;

    LauncherStore &m_store;
    int m_slot;
    std::optional<LauncherItem> m_item; // as shown
    LauncherIcon m_icon;
    bool m_showsInvalidURL = false;
    ElidedLabel *m_title;
    ElidedLabel *m_subtitle;
    SymbolButton *m_clearButton;
    PushButton *m_chooseButton;
    TextField *m_urlField;
    PushButton *m_setButton;
    ElidedLabel *m_message = nullptr; // made when there is something to say
};
