#pragma once

#include <QObject>
#include <QPointer>

class Pasteboard;
class PopupMenu;
class QContextMenuEvent;
class QKeyEvent;
class QMouseEvent;
class TextWidget;

/// Handles pasting, middle clicks and context menus in all text widgets. Qt's own handling asks the
/// clipboard's owner several times and waits five seconds each time.
class TextGestures final : public QObject
{
    Q_OBJECT

public:
    /// Filters the events of all windows until it is destroyed. Needs the QApplication;
    /// `pasteboard` must outlive this object.
    explicit TextGestures(const Pasteboard &pasteboard);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool pressKey(const QKeyEvent &event, const TextWidget &text) const;
    bool releaseButton(const QMouseEvent &event, const TextWidget &text) const;
    void insertSelection(const TextWidget &text) const;
    void openMenu(const TextWidget &text, const QContextMenuEvent &event);

    const Pasteboard &m_pasteboard;
    QPointer<PopupMenu> m_menu; // null while none is open
};
