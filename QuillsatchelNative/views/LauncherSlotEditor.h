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

/// Shows one launcher slot and lets the user fill it with an application or a website, or clear it.
/// It reports what the user does through its callbacks.
class LauncherSlotEditor final : public QWidget
{
    Q_OBJECT

public:
    /// `slot` is an index into `LauncherSlots`. The store must outlive the editor.
    LauncherSlotEditor(const LauncherStore &store, int slot, QWidget *parent);

    /// The user submitted a website (UTF-8). Returns false if it is not a valid one.
    std::function<bool(const std::string &)> onWebsite = [](const std::string &) { return true; };
    /// The user asks to choose an application.
    std::function<void()> onChooseApplication = [] {};
    std::function<void()> onClear = [] {};
    /// The message about an invalid website is shown.
    std::function<void()> onInvalidURL = [] {};

    /// Updates the editor from the slot. Reads the icon every time, but changes the website field
    /// only when the slot holds another launcher.
    void render();

    /// The maximum length of the website field in UTF-16 code units. A text of this length may have
    /// been truncated and counts as invalid.
    static constexpr int MaximumURLLength = 1 << 15;

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
    QString accessibleSummary() const;
    int summaryHeight() const;
    int controlsTop() const;

    const LauncherStore &m_store;
    int m_slot;
    std::optional<LauncherItem> m_item; // the one shown
    LauncherIcon m_icon;
    bool m_showsInvalidURL = false;
    ElidedLabel *m_title;
    ElidedLabel *m_subtitle;
    SymbolButton *m_clearButton;
    PushButton *m_chooseButton;
    TextField *m_urlField;
    PushButton *m_setButton;
    ElidedLabel *m_message = nullptr; // created with the first message
};
